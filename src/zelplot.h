#pragma once

/** @file
 * Every public header of the library.
 */

#include "abstractdataarraytemplate.h"
#include "bounds.h"
#include "dataarray.h"
#include "dataarraytemplate.h"
#include "dbg.h"
#include "memleaktracer.h"
#include "xyplotcommon.h"
#include "zelplotglobals.h"
