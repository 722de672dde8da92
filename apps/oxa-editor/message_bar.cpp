// SPDX-License-Identifier: Apache-2.0
#include "message_bar.h"

#include "oxautils/model/shown_text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent)
    , m_layout(new QHBoxLayout(this))
    , m_text(new QLabel)
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_layout->addWidget(icon, 0, Qt::AlignTop);
    m_layout->addWidget(m_text, 1);
    hide();
}

void MessageBar::showMessage(const QString& text, const QList<Answer>& answers)
{
    for (QWidget* button : qAsConst(m_buttons))
        button->deleteLater();
    m_buttons.clear();
    m_text->setText(OXA::shownLines(text));
    for (const Answer& answer : answers) {
        auto* button = new QPushButton(answer.text);
        connect(button, &QPushButton::clicked, this, [this, chosen = answer.chosen] {
            hide();
            if (chosen)
                chosen();
        });
        m_layout->addWidget(button);
        m_buttons += button;
    }
    show();
}

QString MessageBar::text() const { return isHidden() ? QString() : m_text->text(); }
