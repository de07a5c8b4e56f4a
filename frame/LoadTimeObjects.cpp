#include "frame/LoadTimeObjects.h"

#include "network/ReplyHeader.h"

// In this order. Nothing else may be built at load: no thread, no socket, no registry key.
CString g_strLastFolder;
CMapStringToString g_oHostNameToIp(10);
CUtilsApp g_oApp;
const int g_nReplyHeaderLength = MeasureReplyHeader();

namespace
{
const CModuleRun s_oRun(g_oApp);
}
