// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_SOURCE_SCAN_H
#define OXAUTILS_DESIGN_SOURCE_SCAN_H

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

namespace OXA {

/// The text of a Verilog source with a space for each comment and string; line ends stay.
QByteArray withoutComments(const QByteArray& text);

/// Information in Verilog sources that Yosys does not keep.
class SourceScan {
public:
    /// Reads `files` without comments and strings. Skips files that cannot be read: Yosys reports
    /// them.
    explicit SourceScan(const QStringList& files = {});

    /// The scopes and the name in a component of a flattened path: "lane[0].u" is two, the escaped
    /// name \a.b of a source is one.
    QStringList components(const QString& text, QChar separator = '.') const;

    /// The path "lane[0]/u/a.b" as a reference in Verilog: "\\lane [0].\\u .\\a.b ".
    QString reference(const QString& path) const;

    /// A line to show for each `bind`, which Yosys reads and ignores.
    QStringList warnings() const { return m_warnings; }

private:
    void scan(const QString& file, const QByteArray& text);

    QSet<QString> m_escaped; // names with a '.', a '[' or a '/'
    QStringList m_warnings;
};

}

#endif
