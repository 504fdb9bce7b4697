#pragma once

/** @file
 * Every public header of the library.
 */

#include "dbg.h"
#include "memleaktracer.h"
#include "xyplotcommon.h"
#include "zelplotglobals.h"
