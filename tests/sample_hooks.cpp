// The test class's departure from the field rules: a rule across two fields.
#include "sample.h"

#include "frame/model/descriptor.h"

namespace HALVANE {

namespace {

// A count of 10 needs a level, which no row can say.
void countNeedsLevel(const QUILLET::IQuilletObject &self, bool)
{
    const Sample &s = static_cast<const Sample &>(self);
    if (s.GetCount() == 10 && !s.IsLevelSet())
        throw OutOfRangeException(QStringLiteral("Sample: a count of 10 needs a level."));
}

} // namespace

extern const frame::Hooks kSampleHooks;
const frame::Hooks kSampleHooks = {&countNeedsLevel};

} // namespace HALVANE
