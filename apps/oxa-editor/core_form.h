// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CORE_FORM_H
#define APPS_OXA_EDITOR_CORE_FORM_H

#include "document.h"

#include <QFormLayout>
#include <QSpinBox>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;

/// A spin box whose arrows double and halve the value; any number can be typed.
class DoublingSpinBox : public QSpinBox {
    Q_OBJECT

public:
    using QSpinBox::QSpinBox;
    void stepBy(int steps) override;

protected:
    StepEnabled stepEnabled() const override;
};

/// Rows of a form for fields of a core: a row shows its field, and each input becomes a step of the
/// document, with the row's text.
class CoreForm : public QObject {
    Q_OBJECT

public:
    template <typename T> using Field = std::function<T&(const Core&)>;

    /// A choice of a combo box and the number that a core stores for it.
    struct Choice {
        QString text;
        int value;
    };

    CoreForm(Document& document, QFormLayout* layout);

    QLineEdit* addName(const QString& label, const QString& step, const Field<QString>& field);
    /// The same for the name of a signal, with completion from the configuration's signals and the
    /// design's clocks.
    QLineEdit* addSignalName(
        const QString& label, const QString& step, const Field<QString>& field);
    void addNumber(
        const QString& label, const QString& step, const Field<int>& field, QSpinBox* box);
    QComboBox* addChoice(const QString& label, const QString& step, const Field<int>& field,
        const QList<Choice>& choices);
    QCheckBox* addSwitch(const QString& text, const QString& step, const Field<bool>& field);

    /// Shows the fields of `core`, which may be null.
    void show(const CorePtr& core);

private:
    Location location() const { return {m_core, Page::Capture}; }

    Document& m_document;
    QFormLayout* m_layout;
    CorePtr m_core;
    QList<std::function<void(const Core&)>> m_rows; // each shows its field
};

#endif
