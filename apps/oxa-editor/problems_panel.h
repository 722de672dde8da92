#ifndef APPS_OXA_EDITOR_PROBLEMS_PANEL_H
#define APPS_OXA_EDITOR_PROBLEMS_PANEL_H

#include "document.h"

#include "oxautils/check/problem.h"

#include <QThreadPool>
#include <QWidget>

#include <dev/device_db.h>

class QLabel;
class QListWidget;

/// Everything that is wrong with the configuration, as it is edited. Checking runs in a thread of
/// its own, on a copy.
class ProblemsPanel : public QWidget {
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);
    ~ProblemsPanel() override;

    /// Checks `cores`, whether they fit `part` when it is one, and what they name in `design`,
    /// which may be null; shows the result when it is there, unless another check was begun by
    /// then.
    void check(OXA::OxaMode mode, const Cores& cores, const DEV::ChipInfo& part,
        const std::shared_ptr<const DesignTree>& design);

    const QList<OXA::Problem>& problems() const { return m_problems; }
    QListWidget* list() const { return m_list; }

Q_SIGNALS:
    void checked();
    void activated(const OXA::Problem& problem); ///< the user wants to see its place

private:
    void show(int check, const QList<OXA::Problem>& problems);

    QThreadPool m_pool; // of one thread
    int m_check = 0;
    QList<OXA::Problem> m_problems;
    QLabel* m_label;
    QListWidget* m_list;
};

#endif
