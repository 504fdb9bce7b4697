#include "xydatasetdrawlistener.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "xydataset.h"

namespace {
DebugTag debugTag("XYDataSet");
} // namespace

XYDataSetDrawListener::XYDataSetDrawListener(XYDataSet* drawnDataSet, QObject* parent)
    : QObject(parent)
    , dataSet(drawnDataSet)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYDataSetDrawListener"));
}

XYDataSetDrawListener::~XYDataSetDrawListener()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYDataSetDrawListener"));
}

XYDataSet* XYDataSetDrawListener::getDataSet() const
{
    return dataSet;
}
