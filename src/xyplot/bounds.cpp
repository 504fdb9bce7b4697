#include "bounds.h"

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QtGlobal>

void Bounds::setSize(Direction direction, double size)
{
    if (!isDetermined(direction))
        return;
    double const centre = (get(direction, Upper) + get(direction, Lower)) * 0.5;
    set(direction, Lower, size * -0.5 + centre);
    set(direction, Upper, centre + size * 0.5);
}

void Bounds::clip(Direction direction, Bounds const& limit)
{
    if (!isDetermined(direction))
        return;
    double const lower = get(direction, Lower);
    double const upper = get(direction, Upper);
    double const lowerLimit = limit.get(direction, Lower);
    double const upperLimit = limit.get(direction, Upper);
    bool const disjoint = lower > upperLimit || lowerLimit > upper;
    if (!limit.isDetermined(direction) || disjoint) {
        set(direction, Lower, NaN);
        set(direction, Upper, NaN);
        return;
    }
    set(direction, Lower, qMax(lower, lowerLimit));
    set(direction, Upper, qMin(upper, upperLimit));
}

QDebug operator<<(QDebug debug, Bounds const& bounds)
{
    // As bytes, since the output would put a QString into quotation marks.
    auto const text = [](double value) { return QByteArray::number(value, 'f', 6); };
    debug.nospace() << "(MinX:" << text(bounds.minX).constData()
                    << ",MaxX:" << text(bounds.maxX).constData()
                    << " ; MinY:" << text(bounds.minY).constData()
                    << ",MaxY:" << text(bounds.maxY).constData()
                    << ",Size:" << text(bounds.size(Bounds::Horizontal)).constData() << "x"
                    << text(bounds.size(Bounds::Vertical)).constData() << ")";
    return debug.space();
}
