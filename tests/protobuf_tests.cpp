// The bench's protobuf messages hold the values of the library's document, so
// that the bench's protobuf column compares the same content.
#include "support.h"

#ifdef HALVANE_BENCH_PROTOBUF

#include "../bench/documents.h"
#include "../bench/protobuf_documents.h"

namespace {

// A row's Name as the protobuf enum spells it: upper case, words joined by '_'.
std::string enumName(const char *prefix, const QString &name)
{
    return prefix + name.toUpper().replace(QLatin1Char(' '), QLatin1Char('_')).toStdString();
}

} // namespace

TEST(Protobuf, HoldsTheValuesOfTheLibrarysDocument)
{
    // 1 000 items: every row of the item table and every text of the results.
    const int n = 1000;
    HALVANE::MeasurementResultList library = documents::results(n); // the string getters are not const
    const halvane_bench::MeasurementResultList message = documents::protobufResults(n);
    ASSERT_EQ(message.measurement_data_size(), n);
    for (int i = 0; i < n; ++i) {
        SCOPED_TRACE(i);
        HALVANE::MeasurementData &d = library.GetMeasurementData()[i];
        HALVANE::MeasurementResult &r = d.GetMeasurementResult();
        const halvane_bench::MeasurementData &p = message.measurement_data(i);
        const halvane_bench::MeasurementResult &q = p.measurement_result();
        ASSERT_TRUE(p.has_measurement_item() && p.has_internal_key() && p.has_measurement_mode()
                    && p.has_measurement_state() && p.has_measurement_result() && q.has_time_stamp_ms()
                    && q.has_double_result() && q.has_string_result() && q.has_unit());
        ASSERT_EQ(p.measurement_item(), unsigned(d.GetMeasurementItem()));
        ASSERT_EQ(p.internal_key(), d.GetInternalKey());
        ASSERT_EQ(halvane_bench::MeasurementMode_Name(p.measurement_mode()),
                  enumName("MODE_", HALVANE::MeasurementData::MeasurementModeToName(d.GetMeasurementMode())));
        ASSERT_EQ(halvane_bench::MeasurementState_Name(p.measurement_state()),
                  enumName("STATE_", HALVANE::MeasurementData::MeasurementStateToName(d.GetMeasurementState())));
        ASSERT_EQ(q.time_stamp_ms(), r.GetTimeStamp().toMSecsSinceEpoch());
        ASSERT_EQ(q.double_result(), r.GetDoubleResult());
        ASSERT_EQ(q.string_result(), r.GetStringResult().toStdString());
        ASSERT_EQ(q.unit(), r.GetUnit().toStdString());
    }
}

#endif
