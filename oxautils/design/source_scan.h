#ifndef OXAUTILS_DESIGN_SOURCE_SCAN_H
#define OXAUTILS_DESIGN_SOURCE_SCAN_H

#include <QSet>
#include <QString>
#include <QStringList>

namespace OXA {

/// What is in Verilog sources and lost when Yosys has read them.
class SourceScan {
public:
    /// Reads `files`, comments and strings left out. A file that cannot be read is passed over:
    /// Yosys will say so.
    explicit SourceScan(const QStringList& files = {});

    /// The scopes and the name of a component of a path in the flattened design: "lane[0].u" is
    /// two, and the escaped name \a.b of a source is one.
    QStringList components(const QString& text) const;

    /// The path of components in Verilog: "lane[0].u.\\a.b ".
    QString reference(const QString& text) const;

    /// A line to show for each `bind`, which Yosys reads and ignores.
    QStringList warnings() const { return m_warnings; }

private:
    void scan(const QString& file, const QByteArray& text);

    QSet<QString> m_escaped; // names that hold a '.' or a '['
    QStringList m_warnings;
};

}

#endif
