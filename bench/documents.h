// The benchmark's documents, every field set, built both as library objects
// and as the baseline's plain structs from the same values.
#ifndef HALVANE_BENCH_DOCUMENTS_H
#define HALVANE_BENCH_DOCUMENTS_H

#include "baseline.h"
#include "baseline_antenna.h"

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

// The antenna matrix: six antennas, each with a pattern of 24 to 44 points
// and every field of its definition and wiring set, eight auxiliary timings
// and four receive paths; as a library object and as the baseline's struct,
// from the same values.
HALVANE::AntennaMatrixConfiguration antennaMatrixConfiguration();
baseline::AntennaMatrixConfiguration plainAntennaMatrixConfiguration();

} // namespace documents

#endif
