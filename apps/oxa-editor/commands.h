// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_COMMANDS_H
#define APPS_OXA_EDITOR_COMMANDS_H

#include "core.h"

#include <QUndoCommand>

#include <functional>

/// The pages of the window, in their order.
enum class Page { Capture, Signals, Ports, Units, Expressions };

/// The object of an edit, so that the window can show it.
struct Location {
    CorePtr core; ///< null: the list of cores
    Page page = Page::Capture;
    int item = -1; ///< number of a port, unit or expression
};

using Notify = std::function<void(const Location&)>;

/// Swaps a value of the document with its other value: the one before or after the edit.
template <typename T> class SwapCommand : public QUndoCommand {
public:
    /// Consecutive edits of one value with the same `run` become one step; 0: never merged.
    SwapCommand(const Location& location, T& value, T other, int run, Notify notify)
        : m_location(location)
        , m_value(value)
        , m_other(std::move(other))
        , m_run(run)
        , m_notify(std::move(notify))
    {
    }

    void redo() override { swap(); }
    void undo() override { swap(); }
    int id() const override { return m_run > 0 ? m_run : -1; }

    bool mergeWith(const QUndoCommand* next) override
    {
        const auto* later = dynamic_cast<const SwapCommand*>(next);
        if (!later || &later->m_value != &m_value)
            return false;
        setObsolete(same(m_other, m_value));
        return true;
    }

private:
    void swap()
    {
        std::swap(m_value, m_other);
        m_notify(m_location);
    }

    const Location m_location; // keeps the core, and with it the value
    T& m_value;
    T m_other;
    const int m_run;
    const Notify m_notify;
};

/// Replaces the list of cores, and sets each core's index to its position. Cores that force others
/// still do; those that are removed do not.
class CoresCommand : public QUndoCommand {
public:
    CoresCommand(Cores& cores, const Cores& other, Notify notify);

    void redo() override;
    void undo() override;

private:
    /// What numbers the core itself and those that force it.
    struct Numbers {
        int index;
        QList<int> forcedBy;
    };

    QList<int> renumbered(const QList<int>& indexes) const;
    void swap(const QList<Numbers>& numbers);

    Cores& m_cores;
    Cores m_other;
    QList<Numbers> m_before;
    QList<Numbers> m_after;
    const Notify m_notify;
};

#endif
