// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_COST_PANEL_H
#define APPS_OXA_EDITOR_COST_PANEL_H

#include "document.h"

#include "oxautils/resource/analyzer_estimate.h"

#include <QWidget>

#include <dev/device_db.h>

class QLabel;
class QTreeWidget;
class ShareBar;

/// The resources that the analyzer needs of a part, as bars, and the memory of each core.
class CostPanel : public QWidget {
    Q_OBJECT

public:
    explicit CostPanel(QWidget* parent = nullptr);

    /// Estimates `cores` for `part`, which may be empty.
    void count(const Cores& cores, const DEV::ChipInfo& part);

private:
    void showShares(const OXA_TOOL::AnalyzerAmounts& taken, const DEV::ChipInfo& part);

    QList<ShareBar*> m_bars; // in the order of OXA_TOOL::analyzerResources
    QTreeWidget* m_cores;
};

/// A bar that shows the used share of a resource.
class ShareBar : public QWidget {
    Q_OBJECT

public:
    explicit ShareBar(QWidget* parent = nullptr);

    /// `note` says that it does not fit or may not fit; else empty.
    void setShare(qint64 taken, qint64 available, const QString& note);

    /// Shows only `text`.
    void setText(const QString& text);
    QString text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    double m_share = 0; // above 1: does not fit
};

#endif
