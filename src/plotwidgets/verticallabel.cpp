#include "verticallabel.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>
#include <cmath>

namespace {
DebugTag debugTag("VerticalLabel");
} // namespace

VerticalLabel::VerticalLabel(QString text, QWidget* parent)
    : QLabel(parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("VerticalLabel"));
    setTextPixmap(text);
}

VerticalLabel::~VerticalLabel()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("VerticalLabel"));
}

void VerticalLabel::setText(QString text)
{
    setTextPixmap(text);
}

void VerticalLabel::setTextPixmap(QString text)
{
    labelText = text;
    QFontMetrics const metrics(font());
    int const height = metrics.height();
    int const width = metrics.horizontalAdvance(text);
    qreal const ratio = devicePixelRatioF();
    auto const pixels
        = [=](int length) { return text.isEmpty() ? 0 : truncateToInt(std::ceil(length * ratio)); };
    QPixmap pixmap(pixels(height), pixels(width));
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    if (!pixmap.isNull()) {
        QPainter painter(&pixmap);
        painter.setFont(font());
        painter.setPen(palette().brush(QPalette::Current, QPalette::WindowText).color());
        painter.rotate(-90.0);
        // Turned to the left, the text's room lies at negative x, hence the negative width.
        painter.drawText(QRect(QPoint(0, 0), QPoint(-width - 1, height - 1)),
                         Qt::AlignHCenter | Qt::AlignVCenter, text);
    }
    setPixmap(pixmap);
}

void VerticalLabel::setFontAndUpdate(QFont font)
{
    setFont(font);
    setTextPixmap(QString());
}
