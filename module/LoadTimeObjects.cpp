// The objects that live for as long as the module is loaded. They belong to several subsystems, which declare
// them, and stand together here, because only within one source file does the language promise the order in
// which they are built and, reversed, destroyed.
#include "ZevrinUtils/HttpServices.h"
#include "module/UtilsApp.h"
#include "network/Reply.h"
#include "shell/LastFolder.h"

// In this order. Nothing else may be built at load: no thread, no socket, no registry key.
CString g_strLastFolder;
CMapStringToString CHttpServices::m_oHostNameToIp(10);
static CUtilsApp s_oApp;
const int g_nReplyHeaderLength = MeasureReplyHeader();

static const CModuleRun s_oRun(s_oApp);
