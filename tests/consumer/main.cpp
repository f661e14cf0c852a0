// Builds a document through the installed headers and reads it back.
#include <halvane/halvane.h>

#include <cstdio>

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
    const bool ok = copy == mode && fromBinary == mode;
    std::printf("consumer: %s\n", ok ? "ok" : "MISMATCH");
    return ok ? 0 : 1;
}
