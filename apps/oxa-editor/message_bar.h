// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_MESSAGE_BAR_H
#define APPS_OXA_EDITOR_MESSAGE_BAR_H

#include <QFrame>

#include <functional>

class QHBoxLayout;
class QLabel;

/// A message above the pages, shown until the user answers it or another replaces it.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    struct Answer {
        QString text;
        std::function<void()> chosen; ///< empty: the bar is only hidden
    };

    explicit MessageBar(QWidget* parent = nullptr);

    /// Replaces the message by `text`, with a button for each answer.
    void showMessage(const QString& text, const QList<Answer>& answers);
    QString text() const;

private:
    QHBoxLayout* m_layout;
    QLabel* m_text;
    QList<QWidget*> m_buttons;
};

#endif
