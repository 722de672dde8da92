// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_WAVE_WAVE_ROW_MENU_H
#define APPS_OXA_EDITOR_WAVE_WAVE_ROW_MENU_H

#include "wave_model.h"

#include <QMenu>

class QTreeView;

/// What a user can do with the chosen rows of a waveform: move, group and hide them, and choose how
/// they look.
class WaveRowMenu : public QMenu {
    Q_OBJECT

public:
    /// For the rows of `tree`, which shows `model`; both must outlive this. The keys work in
    /// `owner`.
    WaveRowMenu(QTreeView& tree, WaveModel& model, QWidget& owner);

    void setRadix(Radix radix);
    void move(int step); ///< -1: up, 1: down
    void group();
    void addDivider(); ///< above the current row
    void remove(); ///< groups, whose rows stay, and dividers
    void hideRows(); ///< or shows them again

private:
    /// A number that the user chooses for rows.
    struct Choice {
        QString title;
        int count;
        std::function<QString(int value)> name;
        std::function<int(const QModelIndex& index)> valueOf;
        std::function<void(WaveEntry& entry, int value)> apply;
    };

    QMenu* addChoice(const Choice& choice);
    QAction* add(const QString& text, const QString& key, void (WaveRowMenu::*act)());
    void addChoices();
    void showState();
    QModelIndexList chosen() const;
    WavePlace placeAfterStep(const QModelIndex& edge, int step, bool mayEnterGroup) const;
    void editName(int entryId);

    QTreeView& m_tree;
    WaveModel& m_model;
    QWidget& m_owner;
    QAction* m_hide;
    QAction* m_remove;
    QAction* m_rename;
};

#endif
