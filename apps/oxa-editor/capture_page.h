// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURE_PAGE_H
#define APPS_OXA_EDITOR_CAPTURE_PAGE_H

#include "core_page.h"

class CoreForm;
class EventsGroup;
class QFormLayout;
class QLabel;
class StorageGroup;
class WindowDrawing;

/// The settings of a core's capture: clock, memory, windows, trigger position.
class CapturePage : public CorePage {
    Q_OBJECT

public:
    explicit CapturePage(Document& document, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    void addWindowRows(QFormLayout* layout);
    void addSwitches();

    CoreForm* m_form;
    WindowDrawing* m_drawing;
    StorageGroup* m_storage;
    EventsGroup* m_events;
    QLabel* m_powerUp; // trigger position in a capture from power-up on
};

/// The same for a Lite core.
class LiteCapturePage : public CorePage {
    Q_OBJECT

public:
    explicit LiteCapturePage(Document& document, QWidget* parent = nullptr);

protected:
    void refresh() override;

private:
    CoreForm* m_form;
};

#endif
