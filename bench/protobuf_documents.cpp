// Values of the benchmark's MeasurementResultList, in protobuf's own types:
// the numbers as documents::results computes them, the texts as UTF-8
// std::string. The test Protobuf.HoldsTheValuesOfTheLibrarysDocument keeps
// the two in step.
#include "protobuf_documents.h"

#include <halvane/halvane.h>

#include <string>
#include <vector>

namespace documents {

namespace {

// The Unit column of the measurement item table, converted once.
const std::vector<std::string> &units()
{
    static const std::vector<std::string> table = [] {
        std::vector<std::string> result;
        const int rows = HALVANE::MeasurementData::GetMeasurementItems().size();
        for (int row = 0; row < rows; ++row)
            result.push_back(HALVANE::MeasurementData::MeasurementItemToUnit(qint8(row)).toStdString());
        return result;
    }();
    return table;
}

// 2026-11-24T06:00:00Z, the first time stamp of the library's document.
constexpr qint64 kStartMs = 1795500000000;

} // namespace

void fillProtobufResults(halvane_bench::MeasurementResultList &list, int count)
{
    const std::vector<std::string> &unit = units();
    auto &items = *list.mutable_measurement_data();
    items.Reserve(items.size() + count);
    for (int i = 0; i < count; ++i) {
        const int item = i % 69;
        halvane_bench::MeasurementData *d = items.Add();
        d->set_measurement_item(unsigned(item));
        d->set_internal_key(100000 + i);
        d->set_measurement_mode(halvane_bench::MeasurementMode(i % 9));
        d->set_measurement_state(halvane_bench::MeasurementState(i % 3));
        halvane_bench::MeasurementResult *r = d->mutable_measurement_result();
        r->set_time_stamp_ms(kStartMs + qint64(i) * 125);
        r->set_double_result(-120.0 + (i % 10000) * 0.37);
        r->set_string_result("result " + std::to_string(i % 1000));
        r->set_unit(unit[std::size_t(item)]);
    }
}

halvane_bench::MeasurementResultList protobufResults(int count)
{
    halvane_bench::MeasurementResultList list;
    fillProtobufResults(list, count);
    return list;
}

} // namespace documents
