// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_UNITS_PAGE_H
#define APPS_OXA_EDITOR_UNITS_PAGE_H

#include "core_page.h"

#include <vector>

namespace OXA {
class MatchUnitModel;
}
class QTableView;

/// The match units of a Standard core, in a table that opens the dialog for a unit.
class UnitsPage : public CorePage {
    Q_OBJECT

public:
    explicit UnitsPage(Document& document, QWidget* parent = nullptr);

    void reveal(int item) override;

protected:
    void refresh() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void editUnit(const QModelIndex& index);
    void store(int row, const QString& step);
    void storeSwitches();

    // Copies of the core's units: model and dialog change these, then the document is updated.
    std::vector<OXA::MatchUnit> m_drafts;
    OXA::MatchUnitModel* m_model;
    QTableView* m_view;
};

#endif
