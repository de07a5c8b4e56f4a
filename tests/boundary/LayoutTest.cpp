// Hosts are compiled against these layouts: sizes, offsets and slots of the 32-bit build.
#include "ZevrinUtils/Base64Coder.h"
#include "ZevrinUtils/ConfigParams.h"
#include "ZevrinUtils/CritSection.h"
#include "ZevrinUtils/DNSResolver.h"
#include "ZevrinUtils/Folder.h"
#include "ZevrinUtils/FolderDialog.h"
#include "ZevrinUtils/Generators.h"
#include "ZevrinUtils/HttpServices.h"
#include "ZevrinUtils/PortListener.h"
#include "ZevrinUtils/SQLFileParser.h"
#include "ZevrinUtils/SimpleMapi.h"
#include "ZevrinUtils/SystemInfo.h"

#include <cstddef>
#include <cstring>
#include <type_traits>

#include <gtest/gtest.h>

namespace
{
constexpr bool bWindows32 = sizeof(void*) == 4;
}

static_assert(!std::has_virtual_destructor_v<CSLockable> && std::has_virtual_destructor_v<CSCritSection>);
static_assert(!bWindows32 || sizeof(CSLockable) == 4);
static_assert(!bWindows32 || sizeof(CSCritSection) == 28);

static_assert(!std::has_virtual_destructor_v<CSFolderConsumer> && std::has_virtual_destructor_v<CSFolder>);
static_assert(!bWindows32 || (sizeof(CSFolder) == 4 && sizeof(CSFolderConsumer) == 4));

struct CSDNSResolverPeer
{
    using R = CSDNSResolver;
    static_assert(!bWindows32 || offsetof(R, m_hQueueEvent) == 0);
    static_assert(!bWindows32 || offsetof(R, m_hStopEvent) == 4);
    static_assert(!bWindows32 || offsetof(R, m_hThread) == 8);
    static_assert(!bWindows32 || offsetof(R, m_oResultsLock) == 12);
    static_assert(!bWindows32 || offsetof(R, m_oQueueLock) == 40);
    static_assert(!bWindows32 || offsetof(R, m_oResultsMap) == 68);
    static_assert(!bWindows32 || offsetof(R, m_oResolutionQueue) == 92);
    static_assert(!bWindows32 || sizeof(R) == 104);
};

struct CConfigParamsPeer : CConfigParamsBase
{
    using CConfigParamsBase::OpenKeys;
};
static_assert(sizeof(CConfigParamsBase) == sizeof(void*) && sizeof(CSSQLFileParser) == sizeof(void*));
static_assert(std::has_virtual_destructor_v<CConfigParamsBase> && std::has_virtual_destructor_v<CSSQLFileParser>);

struct CSystemInfoPeer
{
    using I = CSystemInfo;
    static_assert(std::has_virtual_destructor_v<I>);
    static_assert(!bWindows32 || (offsetof(I, m_tLastDiskCheck) == 4 && offsetof(I, m_ulFreeDiskMegabytes) == 8));
    static_assert(!bWindows32 || (offsetof(I, m_dFreeDiskPercent) == 16 && offsetof(I, m_oDiskLock) == 24));
    static_assert(!bWindows32 || offsetof(I, m_sDiskSpaceDirectory) == 52);
};

struct CSPortListenerPeer
{
    using L = CSPortListener;
    static_assert(!bWindows32 || offsetof(L, m_bWinsockStarted) == 4);
    static_assert(!bWindows32 || offsetof(L, m_oListeners) == 8);
    static_assert(!bWindows32 || (sizeof(L) == 20 && sizeof(ZVString) == 8));
    using R = CSListenerRecord;
    static_assert(!bWindows32 || (offsetof(R, m_hSocket) == 4 && offsetof(R, m_pfnHandler) == 8));
    static_assert(!bWindows32 || (offsetof(R, m_hThread) == 12 && sizeof(R) == 16));
};

struct CHttpServicesPeer
{
    using H = CHttpServices;
    static_assert(!bWindows32 || (offsetof(H, m_pSession) == 4 && offsetof(H, m_pConnection) == 8));
    static_assert(!bWindows32 || (offsetof(H, m_pObserver) == 12 && offsetof(H, m_pFile) == 16));
    static_assert(!bWindows32 || (offsetof(H, m_strAppName) == 20 && offsetof(H, m_strUserName) == 44));
    static_assert(!bWindows32 || (offsetof(H, m_strPassword) == 68 && offsetof(H, m_nGetPostType) == 92));
    static_assert(!bWindows32 || (offsetof(H, m_bAbort) == 96 && offsetof(H, m_bSecure) == 100));
    static_assert(!bWindows32 || (offsetof(H, m_nSecurePort) == 104 && sizeof(H) == 108));
    static_assert(!std::has_virtual_destructor_v<CHTTPRequestObserver>);
};

struct Base64CoderPeer : Base64Coder
{
    static void Expect();
};

struct CFolderDialogPeer : CFolderDialog
{
    using F = CFolderDialog;
    using F::OnInitialized, F::OnMessage, F::OnSelChanged, F::OnValidateFailed;
    static_assert(!bWindows32 || (sizeof(CWnd) == 12 && offsetof(F, m_oBrowseInfo) == 12));
    static_assert(!bWindows32 || (offsetof(F, m_strDisplayName) == 44 && offsetof(F, m_bBrowseOption) == 68));
    static_assert(!bWindows32 || (offsetof(F, m_pDesktopFolder) == 72 && offsetof(F, m_strStartFolder) == 76));
    static_assert(!bWindows32 || (offsetof(F, m_strCurrentFolder) == 100 && offsetof(F, m_bFolderTyped) == 124));
    static_assert(!bWindows32 || sizeof(F) == 128);
};

struct CSIMapiPeer
{
    using M = CSIMapi;
    static_assert(!bWindows32 || (offsetof(M, m_nLastError) == 4 && offsetof(M, m_strLastError) == 8));
    static_assert(!bWindows32 || (offsetof(M, m_oMessage) == 32 && offsetof(M, m_oOriginator) == 80));
    static_assert(!bWindows32 || (offsetof(M, m_strText) == 104 && offsetof(M, m_lpfnSendMail) == 128));
    static_assert(!bWindows32 || sizeof(M) == 132);
};

namespace
{
// A pointer to a virtual operation holds the place of its slot, in bytes and plus one.
template <class Operation>
std::size_t SlotOf(Operation pOperation)
{
    std::size_t nPlace = 0;
    std::memcpy(&nPlace, &pOperation, sizeof nPlace);
    return (nPlace - 1) / sizeof(void*);
}
}

void Base64CoderPeer::Expect()
{
    using C = Base64CoderPeer;
    static_assert(!bWindows32 || (offsetof(C, m_nBlockSize) == 4 && offsetof(C, m_pBlockBuffer) == 8));
    static_assert(!bWindows32 || (offsetof(C, m_pDecodeBuffer) == 12 && offsetof(C, m_pEncodeBuffer) == 16));
    static_assert(!bWindows32 || (offsetof(C, m_nDecodeCapacity) == 20 && offsetof(C, m_nEncodeCapacity) == 24));
    static_assert(!bWindows32 || (offsetof(C, m_nDecodeSize) == 28 && offsetof(C, m_nEncodeSize) == 32));
    static_assert(!bWindows32 || (sizeof(C) == 36 && sizeof(TempBucket) == 5 && sizeof(CSPasswordUtils) == 4));
    using Files = int (C::*)(const char*, const char*);
    using Bytes = void (C::*)(BYTE*, unsigned long);
    EXPECT_EQ(SlotOf<Files>(&C::Encode), 2u);
    EXPECT_EQ(SlotOf<Bytes>(&C::Encode), 3u);
    EXPECT_EQ(SlotOf<Files>(&C::Decode), 4u);
    EXPECT_EQ(SlotOf<Bytes>(&C::Decode), 5u);
    EXPECT_EQ(SlotOf(&C::EncodedMessage), 7u);
    EXPECT_EQ(SlotOf(&C::AllocDecode), 9u);
    EXPECT_EQ(SlotOf(&C::SetDecodeBuffer), 11u);
    EXPECT_EQ(SlotOf(&C::_EncodeToBuffer), 13u);
    EXPECT_EQ(SlotOf(&C::_EncodeRaw), 15u);
    EXPECT_EQ(SlotOf(&C::_IsBadMimeChar), 17u);
}

TEST(Layout, VirtualOperationsStandInTheirSlots)
{
    EXPECT_EQ(SlotOf(&CSLockable::Lock), 0u);
    EXPECT_EQ(SlotOf(&CSLockable::Unlock), 1u);
    EXPECT_EQ(SlotOf(&CSCritSection::Lock), 0u);
    EXPECT_EQ(SlotOf(&CSCritSection::Unlock), 1u);
    // Behind the two places that the destructor takes.
    EXPECT_EQ(SlotOf(&ZVString::Alloc), 2u);
    EXPECT_EQ(SlotOf(&ZVString::GetBuffer), 3u);
    EXPECT_EQ(SlotOf(&ZVString::GetString), 4u);
    EXPECT_EQ(SlotOf(&ZVString::Detach), 5u);
    EXPECT_EQ(SlotOf(&ZVString::Attach), 6u);
    EXPECT_EQ(SlotOf(&CHTTPRequestObserver::OnContentLength), 0u);
    EXPECT_EQ(SlotOf(&CHTTPRequestObserver::bOnDataBlock), 1u);
    EXPECT_EQ(SlotOf(&CHTTPRequestObserver::bKeepRunning), 2u);
    EXPECT_EQ(SlotOf(&CHTTPRequestObserver::OnRequestEnd), 3u);
    EXPECT_EQ(SlotOf(&CHTTPRequestObserver::OnDialogShown), 4u);
    EXPECT_EQ(SlotOf(&CSFolderConsumer::OnFolderFound), 0u);
    EXPECT_EQ(SlotOf(&CConfigParamsPeer::OpenKeys), 2u);
    // Behind the window's.
    EXPECT_EQ(SlotOf(&CFolderDialogPeer::OnMessage), 3u);
    EXPECT_EQ(SlotOf(&CFolderDialogPeer::OnInitialized), 4u);
    EXPECT_EQ(SlotOf(&CFolderDialogPeer::OnSelChanged), 5u);
    EXPECT_EQ(SlotOf(&CFolderDialogPeer::OnValidateFailed), 6u);
    Base64CoderPeer::Expect();
}
