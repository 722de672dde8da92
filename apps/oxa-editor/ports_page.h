// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_PORTS_PAGE_H
#define APPS_OXA_EDITOR_PORTS_PAGE_H

#include "core_page.h"

class QListWidget;
class SignalEditor;

/// The 16 trigger ports of a Standard core and the signals of the chosen one.
class PortsPage : public CorePage {
    Q_OBJECT

public:
    explicit PortsPage(Document& document, QWidget* parent = nullptr);

    void reveal(int item) override;
    void revealNamedIn(const QString& text) override;
    void insert(const QList<OXA::SignalItem>& items) override;

protected:
    void refresh() override;

private:
    OXA::TriggerPort* port() const;
    void showPort();
    void changePort(const QList<OXA::SignalItem>& items, const QString& step);
    void moveValues(const QStringList& before, const QStringList& after);
    void addDataSignals();

    QListWidget* m_ports;
    SignalEditor* m_editor;
};

#endif
