// Stands between the library's load-time objects and their constructors and destructors (the linker's
// --wrap puts it there) and reports each through the trace service, which outlives this module.
#include "Fendrel/Trace.h"

#define TEXT_OF(x) #x
#define EXPANDED(x) TEXT_OF(x)
// A member function under a name of the linker's: so it is called as the constructor would be.
#define NAMED(name) asm(EXPANDED(__USER_LABEL_PREFIX__) name)

#define PROBE(probe, symbol, text)                                                                                     \
    struct probe                                                                                                       \
    {                                                                                                                  \
        void Wrap() NAMED("__wrap_" symbol);                                                                           \
        void Real() NAMED("__real_" symbol);                                                                           \
    };                                                                                                                 \
    void probe::Wrap()                                                                                                 \
    {                                                                                                                  \
        Report(text);                                                                                                  \
        Real();                                                                                                        \
    }

namespace
{
void Report(const char* pszWhat)
{
    CSTrace::instance()->Trace(CSTrace::eError, pszWhat, "", "", "", 0);
}
}

PROBE(StringBuilt, "_ZN7CStringC1Ev", "+ string")
PROBE(StringGone, "_ZN7CStringD1Ev", "- string")
PROBE(MapGone, "_ZN18CMapStringToStringD1Ev", "- map")
PROBE(AppBuilt, "_ZN9CUtilsAppC1Ev", "+ application")
PROBE(AppGone, "_ZN9CUtilsAppD1Ev", "- application")

struct MapBuilt
{
    void Wrap(int nBlockSize) NAMED("__wrap__ZN18CMapStringToStringC1Ei");
    void Real(int nBlockSize) NAMED("__real__ZN18CMapStringToStringC1Ei");
};
void MapBuilt::Wrap(int nBlockSize)
{
    Report(nBlockSize == 10 ? "+ map of 10" : "+ map of another block size");
    Real(nBlockSize);
}

int WrapMeasure() NAMED("__wrap__Z18MeasureReplyHeaderv");
int RealMeasure() NAMED("__real__Z18MeasureReplyHeaderv");
int WrapMeasure()
{
    const int nLength = RealMeasure();
    Report(nLength == 109 ? "+ header length" : "+ header length, but wrong");
    return nLength;
}
