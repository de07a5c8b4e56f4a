#include "../SocketLayer.h"

#include "ZevrinUtils/Types.h"

bool StartSocketLayer()
{
    WSADATA oData{};
    return WSAStartup(MAKEWORD(2, 2), &oData) == 0;
}
