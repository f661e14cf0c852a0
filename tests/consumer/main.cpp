// Builds a document through the installed headers and reads it back; an
// exception thrown inside the library is caught here by its type, the
// registry knows every class, and the library is the version of the headers.
#include <halvane/halvane.h>

#include <cstdio>
#include <cstring>

int main()
{
    HALVANE::ModeManager mode;
    mode.SetValidate(true);
    mode.SetRunningState(mode.NameToRunningState(QStringLiteral("On")));
    mode.SetDualState(0);
    mode.SetSearchScanMode(mode.GuinameToSearchScanMode(QStringLiteral("HOLD")));

    HALVANE::ModeManager copy;
    copy.SetXmlString(mode.GetXmlString());
    HALVANE::ModeManager fromBinary;
    fromBinary.SetBinaryRepresentation(mode.GetBinaryRepresentationAsQByteArray());
    bool ok = copy == mode && fromBinary == mode;

    bool caught = false;
    try {
        mode.SetDualState(100);
    } catch (const OutOfRangeException &) {
        caught = true;
    }
    const HALVANE::schema::Class *c = HALVANE::schema::findClass(QStringLiteral("ModeManager"));
    ok = ok && caught && c && c->id == HALVANE::ModeManager::GetId() && HALVANE::schema::classes().size() == 56
         && std::strcmp(HALVANE::libraryVersion(), HALVANE_VERSION_STRING) == 0;
    std::printf("consumer: %s (Halvane %s)\n", ok ? "ok" : "MISMATCH", HALVANE::libraryVersion());
    return ok ? 0 : 1;
}
