// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_PROBLEMS_PANEL_H
#define APPS_OXA_EDITOR_PROBLEMS_PANEL_H

#include "document.h"

#include "oxautils/check/problem.h"

#include <QThreadPool>
#include <QWidget>

#include <dev/device_db.h>

class QLabel;
class QListWidget;

/// The problems of the edited configuration. A separate thread checks a copy.
class ProblemsPanel : public QWidget {
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);
    ~ProblemsPanel() override;

    /// Checks `cores`, against `part` when it is one, and against `design`, which may be null.
    /// Shows the result unless another check was started in the meantime.
    void check(OXA::OxaMode mode, const Cores& cores, const DEV::ChipInfo& part,
        const std::shared_ptr<const DesignTree>& design);

    const QList<OXA::Problem>& problems() const { return m_problems; }
    QListWidget* list() const { return m_list; }

Q_SIGNALS:
    void checked();
    void activated(const OXA::Problem& problem); ///< the user wants its place shown

private:
    void show(int check, const QList<OXA::Problem>& problems);

    QThreadPool m_pool; // of one thread
    int m_check = 0;
    QList<OXA::Problem> m_problems;
    QLabel* m_label;
    QListWidget* m_list;
};

#endif
