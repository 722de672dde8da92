// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_UNIT_DIALOG_H
#define APPS_OXA_EDITOR_UNIT_DIALOG_H

#include "oxautils/editor/match_unit_dialog.h"

/// The dialog of a match unit with a legend of its digits. Another radix or type clears values that
/// it cannot show; before such a loss is accepted, the dialog asks.
class UnitDialog : public OXA::MatchUnitDialog {
    Q_OBJECT

public:
    /// `unit` has to outlive the dialog.
    UnitDialog(OXA::MatchUnit* unit, QWidget* parent);

    void done(int result) override;

private:
    void addLegend();
    void chooseOnlyPort();
    QStringList losses() const;

    OXA::MatchUnit* m_unit;
    const OXA::MatchUnit m_before;
    bool m_mayClear = false; // the radix, the type or the function was changed
};

#endif
