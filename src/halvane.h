// Every class of the Halvane data model.
#ifndef HALVANE_HALVANE_H
#define HALVANE_HALVANE_H

#include "base/converters.h"
#include "base/exceptions.h"
#include "base/quilletobject.h"

#include "frame/dataclass.h"
#include "frame/modemanager.h"
#include "frame/schema.h"

#include "administration/administration.h"
#include "administration/minmaxstep.h"
#include "administration/sensormetadata.h"

#include "measurements/measurementdata.h"
#include "measurements/measurementlist.h"
#include "measurements/measurementresult.h"
#include "measurements/measurementresultlist.h"
#include "measurements/rdsresult.h"

#endif
