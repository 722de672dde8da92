// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SIGNALS_PAGE_H
#define APPS_OXA_EDITOR_SIGNALS_PAGE_H

#include "core_page.h"

class SignalEditor;

/// The data signals of a core of either mode.
class SignalsPage : public CorePage {
    Q_OBJECT

public:
    explicit SignalsPage(Document& document, QWidget* parent = nullptr);

    void revealNamedIn(const QString& text) override;
    void insert(const QList<OXA::SignalItem>& items) override;

protected:
    void refresh() override;

private:
    SignalEditor* m_editor;
};

#endif
