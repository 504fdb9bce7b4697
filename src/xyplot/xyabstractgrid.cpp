#include "xyabstractgrid.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "xyscale.h"

namespace {
DebugTag debugTag("XYAbstractGrid");
}

XYAbstractGrid::XYAbstractGrid(E_ORIENTATION_TYPE axis, QWidget* parent)
    : QWidget(parent)
    , orientation(axis)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYAbstractGrid"));
    // A parent that is shown later would show its child too, as an empty patch in its corner.
    hide();
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

XYAbstractGrid::~XYAbstractGrid()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYAbstractGrid"));
}

void XYAbstractGrid::setLabelType(E_LABEL_TYPE type)
{
    labelType = type;
    if (scale)
        scale->setLabelType(type);
}

XYScale* XYAbstractGrid::getScale() const
{
    return scale;
}

void XYAbstractGrid::setScale(XYScale* newScale)
{
    scale = newScale;
}
