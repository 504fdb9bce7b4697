#include "plotframe.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

PlotFrame::PlotFrame(QString const& title, QString const& mouseForm, QWidget* parent)
    : QWidget(parent)
    , m_mouseForm(mouseForm)
    , m_mouse(new QLabel(this))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const heading = new QHBoxLayout;
    heading->setContentsMargins(12, 0, 12, 0);
    heading->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(title.toHtmlEscaped()), this));
    heading->addStretch();
    heading->addWidget(m_mouse);
    column->addLayout(heading);
}

void PlotFrame::addPlot(QWidget* plot)
{
    static_cast<QVBoxLayout*>(layout())->addWidget(plot, 1);
}

void PlotFrame::forgetMouse()
{
    m_mouse->clear();
}

void PlotFrame::drawMouseCoords(QString const& x, QString const& y)
{
    m_mouse->setText(m_mouseForm.arg(x, y));
}
