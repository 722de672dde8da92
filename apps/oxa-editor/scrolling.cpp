// SPDX-License-Identifier: Apache-2.0
#include "scrolling.h"

#include <QEvent>
#include <QScrollArea>

namespace {

/// Fills itself with its content. In a scroll area, a widget whose layout wraps texts keeps its
/// preferred height; this one has no layout, so that the area makes it as small as its least size.
class Pane : public QWidget {
public:
    explicit Pane(QWidget* content)
        : m_content(content)
    {
        content->setParent(this);
        setMaximumWidth(content->maximumWidth());
        fit();
    }

    QSize sizeHint() const override { return m_content->sizeHint(); }
    QSize minimumSizeHint() const override { return m_content->minimumSizeHint(); }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            fit();
        return QWidget::event(event);
    }

    void resizeEvent(QResizeEvent*) override { fit(); }

private:
    void fit()
    {
        m_content->setGeometry(rect());
        updateGeometry();
    }

    QWidget* m_content;
};

}

QScrollArea* scrolling(QWidget* content)
{
    auto* area = new QScrollArea;
    area->setWidget(new Pane(content));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // focus scrolls to the fields in it
    return area;
}
