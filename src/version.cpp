// The version of the library that a program runs with.
#include <halvane/version.h>

namespace HALVANE {

const char *libraryVersion()
{
    return HALVANE_VERSION_STRING;
}

} // namespace HALVANE
