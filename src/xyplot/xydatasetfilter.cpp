#include "xydatasetfilter.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "xydataset.h"

namespace {
DebugTag debugTag("XYDataSet");
} // namespace

XYDataSetFilter::XYDataSetFilter(XYDataSet* filteredDataSet, QObject* parent)
    : QObject(parent)
    , dataSet(filteredDataSet)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYDataSetFilter"));
}

XYDataSetFilter::~XYDataSetFilter()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYDataSetFilter"));
}

void XYDataSetFilter::clearCache()
{
}
