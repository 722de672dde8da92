#ifndef APPS_OXA_EDITOR_MESSAGE_BAR_H
#define APPS_OXA_EDITOR_MESSAGE_BAR_H

#include <QFrame>

#include <functional>

class QHBoxLayout;
class QLabel;

/// A word to the user above the pages, which stays until it is answered or outdated.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    struct Answer {
        QString text;
        std::function<void()> chosen; ///< may be empty: the bar only goes
    };

    explicit MessageBar(QWidget* parent = nullptr);

    /// Shows `text` in place of what was there, with a button for each answer.
    void showMessage(const QString& text, const QList<Answer>& answers);
    QString text() const;

private:
    QHBoxLayout* m_layout;
    QLabel* m_text;
    QList<QWidget*> m_buttons;
};

#endif
