// A name table longer than a signed byte can index.
#include "frame/text/nametable.h"

namespace {
constexpr const char *kNames[] = {
    "Row0", "Row1", "Row2", "Row3", "Row4", "Row5", "Row6", "Row7",
    "Row8", "Row9", "Row10", "Row11", "Row12", "Row13", "Row14", "Row15",
    "Row16", "Row17", "Row18", "Row19", "Row20", "Row21", "Row22", "Row23",
    "Row24", "Row25", "Row26", "Row27", "Row28", "Row29", "Row30", "Row31",
    "Row32", "Row33", "Row34", "Row35", "Row36", "Row37", "Row38", "Row39",
    "Row40", "Row41", "Row42", "Row43", "Row44", "Row45", "Row46", "Row47",
    "Row48", "Row49", "Row50", "Row51", "Row52", "Row53", "Row54", "Row55",
    "Row56", "Row57", "Row58", "Row59", "Row60", "Row61", "Row62", "Row63",
    "Row64", "Row65", "Row66", "Row67", "Row68", "Row69", "Row70", "Row71",
    "Row72", "Row73", "Row74", "Row75", "Row76", "Row77", "Row78", "Row79",
    "Row80", "Row81", "Row82", "Row83", "Row84", "Row85", "Row86", "Row87",
    "Row88", "Row89", "Row90", "Row91", "Row92", "Row93", "Row94", "Row95",
    "Row96", "Row97", "Row98", "Row99", "Row100", "Row101", "Row102", "Row103",
    "Row104", "Row105", "Row106", "Row107", "Row108", "Row109", "Row110", "Row111",
    "Row112", "Row113", "Row114", "Row115", "Row116", "Row117", "Row118", "Row119",
    "Row120", "Row121", "Row122", "Row123", "Row124", "Row125", "Row126", "Row127",
#ifdef HALVANE_BREAK
    "Row128",
#endif
};
const HALVANE::frame::NameTable kTable(kNames);
} // namespace
