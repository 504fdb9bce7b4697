#pragma once

/** @file
 * Every public header of the library.
 */

#include "abstractdataarraytemplate.h"
#include "bounds.h"
#include "colorbardrawlistener.h"
#include "dataarray.h"
#include "dataarraytemplate.h"
#include "dbg.h"
#include "lineargrid.h"
#include "lineartimegrid.h"
#include "look.h"
#include "markers.h"
#include "memleaktracer.h"
#include "viewportmap.h"
#include "viewportmaskfilter.h"
#include "viewtransform.h"
#include "xyabstractgrid.h"
#include "xycanvas.h"
#include "xydataset.h"
#include "xydatasetdrawlistener.h"
#include "xydatasetfilter.h"
#include "xyplotcommon.h"
#include "xyscale.h"
#include "zelplotglobals.h"
