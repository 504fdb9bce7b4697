#pragma once

/** @file
 * Every public header of the library.
 */

#include "dbg.h"
#include "lineargrid.h"
#include "lineartimegrid.h"
#include "memleaktracer.h"
#include "xyabstractgrid.h"
#include "xyplotcommon.h"
#include "xyscale.h"
#include "zelplotglobals.h"
