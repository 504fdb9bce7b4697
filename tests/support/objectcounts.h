#pragma once

#include "memleaktracer.h"
#include <QStringList>

/// Classes of which the tracer still counts live objects, as "Name: 2"; empty when all are gone.
inline QStringList liveObjects()
{
    QStringList live;
    QHash<QString, int> const& counts = MemLeakTracer::getInstance()->getObjectCounts();
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() != 0)
            live.append(QStringLiteral("%1: %2").arg(it.key()).arg(it.value()));
    }
    live.sort();
    return live;
}
