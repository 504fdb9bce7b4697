#include "verticalscrollbar.h"

#include "debugtag.h"
#include "memleaktracer.h"

#include <QMouseEvent>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionSlider>

namespace {

DebugTag debugTag("VerticalScrollBar");

constexpr int repeatDelayMs = 500;
constexpr int repeatIntervalMs = 50;

struct InverseAction
{
    QStyle::SubControl part;
    QAbstractSlider::SliderAction action;
};

constexpr InverseAction inverseActions[] = {
    {QStyle::SC_ScrollBarAddLine, QAbstractSlider::SliderSingleStepSub},
    {QStyle::SC_ScrollBarSubLine, QAbstractSlider::SliderSingleStepAdd},
    {QStyle::SC_ScrollBarAddPage, QAbstractSlider::SliderPageStepSub},
    {QStyle::SC_ScrollBarSubPage, QAbstractSlider::SliderPageStepAdd},
};

} // namespace

VerticalScrollBar::VerticalScrollBar(QWidget* parent)
    : QScrollBar(parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("VerticalScrollBar"));
}

VerticalScrollBar::~VerticalScrollBar()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("VerticalScrollBar"));
}

void VerticalScrollBar::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    QStyle::SubControl const part = style()->hitTestComplexControl(
        QStyle::CC_ScrollBar, &option, event->position().toPoint(), this);
    for (InverseAction const& inverse : inverseActions) {
        if (inverse.part != part)
            continue;
        QPointer<VerticalScrollBar> const bar(this);
        triggerAction(inverse.action);
        if (bar) // the step may have ended its plot
            setRepeatAction(inverse.action, repeatDelayMs, repeatIntervalMs);
        return;
    }
    QScrollBar::mousePressEvent(event);
}

void VerticalScrollBar::mouseReleaseEvent(QMouseEvent*)
{
    setRepeatAction(SliderNoAction, repeatDelayMs, repeatIntervalMs);
}
