// The benchmark's documents, every field set, built both as library objects
// and as the baseline's plain structs from the same values.
#ifndef HALVANE_BENCH_DOCUMENTS_H
#define HALVANE_BENCH_DOCUMENTS_H

#include "baseline.h"

#include <halvane/halvane.h>

namespace documents {

HALVANE::ModeManager modeManager();
HALVANE::Administration administration();
HALVANE::MeasurementResultList results(int count);
/*! One filled item, as the list holds it. */
HALVANE::MeasurementData measurement(int i);

baseline::ModeManager plainModeManager();
baseline::Administration plainAdministration();
baseline::MeasurementResultList plainResults(int count);

} // namespace documents

#endif
