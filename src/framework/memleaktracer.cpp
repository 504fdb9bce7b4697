#include "memleaktracer.h"

MemLeakTracer* MemLeakTracer::getInstance()
{
    static MemLeakTracer tracer;
    return &tracer;
}

void MemLeakTracer::doAllocateObject(QString const& className)
{
    ++objectCounts[className];
}

void MemLeakTracer::doDeallocateObject(QString const& className)
{
    --objectCounts[className];
}

int MemLeakTracer::getObjectCount(QString const& className) const
{
    return objectCounts.value(className, 0);
}
