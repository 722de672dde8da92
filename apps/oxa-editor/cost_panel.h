#ifndef APPS_OXA_EDITOR_COST_PANEL_H
#define APPS_OXA_EDITOR_COST_PANEL_H

#include "document.h"

#include <QWidget>

#include <dev/device_db.h>

class QLabel;
class QTreeWidget;
class ShareBar;

/// What the cores' memories take of a part, as bars.
class CostPanel : public QWidget {
    Q_OBJECT

public:
    explicit CostPanel(QWidget* parent = nullptr);

    /// Counts for `cores` on `part`, which may be none.
    void count(const Cores& cores, const DEV::ChipInfo& part);

private:
    static constexpr int kKinds = 3;

    ShareBar* m_bars[kKinds]; // in the order of OXA_TOOL::MemoryKind
    QTreeWidget* m_cores;
};

/// A bar that shows how much of something is taken.
class ShareBar : public QWidget {
    Q_OBJECT

public:
    explicit ShareBar(QWidget* parent = nullptr);

    void setShare(qint64 taken, qint64 available);

    /// Shows nothing but `text`.
    void setText(const QString& text);
    QString text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    double m_share = 0; // above 1: more than there is
};

#endif
