#pragma once

#include "memleaktracer.h"
#include <QStringList>

/// Classes of which the tracer still counts live objects, as "Name: 2"; empty when all are gone.
/// The one organizer of views stays to the end of the process.
inline QStringList liveObjects()
{
    QStringList live;
    QHash<QString, int> const& counts = MemLeakTracer::getInstance()->getObjectCounts();
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() != 0 && it.key() != QLatin1String("ViewSynchronizationOrganizer"))
            live.append(QStringLiteral("%1: %2").arg(it.key()).arg(it.value()));
    }
    live.sort();
    return live;
}
