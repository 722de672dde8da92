// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CAPTURES_SAMPLE_MENU_H
#define APPS_OXA_EDITOR_CAPTURES_SAMPLE_MENU_H

#include "trigger_on.h"

#include "oxa-editor/document.h"
#include "oxa-editor/wave/waveform.h"

#include <optional>

class QContextMenuEvent;
class QMenu;
class WaveView;

/// What the right button, or the menu key, offers for a value or an edge in a waveform, before the
/// menu of the view.
class SampleMenu : public QObject {
    Q_OBJECT

public:
    /// `coreOf` gives the core that a row of the waveform is of; it may be null.
    SampleMenu(Document& document, WaveView& view,
        const std::function<CorePtr(const WaveRow& row)>& coreOf);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void edited(const Location& location); ///< a unit
    void dataWanted(const CorePtr& core, const QList<OXA::SignalItem>& items);

private:
    bool choose(const QContextMenuEvent& event);
    void addActions(QMenu& menu);
    TriggerValue value() const;
    void triggerOnThis();
    void findNext();
    OXA::SignalItem item() const;
    bool isData() const;

    Document& m_document;
    WaveView& m_view;
    std::function<CorePtr(const WaveRow& row)> m_coreOf;
    std::optional<WaveRow> m_row; // that was clicked; the view may get another waveform meanwhile
    qint64 m_samples = 0; // of the waveform
    qint64 m_sample = 0;
    bool m_isEdge = false; // the beginning of the sample is meant
};

#endif
