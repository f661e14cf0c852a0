// The benchmark's MeasurementResultList as protobuf messages
// (measurements.proto), built through protobuf's generated setters from the
// values of documents::results: a reference point for the library's setters,
// memory and binary forms. Built only where protobuf was found.
#ifndef HALVANE_BENCH_PROTOBUF_DOCUMENTS_H
#define HALVANE_BENCH_PROTOBUF_DOCUMENTS_H

#include "measurements.pb.h"

namespace documents {

/*! Appends count filled items to the list, which may live on an arena. */
void fillProtobufResults(halvane_bench::MeasurementResultList &list, int count);
/*! A list of count filled items on the heap. */
halvane_bench::MeasurementResultList protobufResults(int count);

} // namespace documents

#endif
