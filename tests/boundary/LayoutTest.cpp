// Hosts are compiled against these layouts: sizes, offsets and slots of the Windows builds.
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

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace
{
enum class Build
{
    windows32,
    windows64,
    other
};
constexpr Build eBuild = sizeof(long) == 8 ? Build::other : sizeof(void*) == 4 ? Build::windows32 : Build::windows64;

// Of the other build nothing is promised.
constexpr bool Are(std::initializer_list<std::size_t> anActual, std::initializer_list<std::size_t> anPromised32,
                   std::initializer_list<std::size_t> anPromised64)
{
    return eBuild == Build::other ||
           std::ranges::equal(anActual, eBuild == Build::windows32 ? anPromised32 : anPromised64);
}
}

#define AT(field) offsetof(T, field)

static_assert(Are({sizeof(CSLockable), sizeof(CSCritSection), sizeof(CSFolder), sizeof(CSFolderConsumer)},
                  {4, 28, 4, 4}, {8, 48, 8, 8}));
static_assert(Are({sizeof(CConfigParamsBase), sizeof(CSSQLFileParser), sizeof(CSPasswordUtils)}, {4, 4, 4}, {8, 8, 8}));
static_assert(!std::has_virtual_destructor_v<CSLockable> && std::has_virtual_destructor_v<CSCritSection>);
static_assert(!std::has_virtual_destructor_v<CSFolderConsumer> && std::has_virtual_destructor_v<CSFolder>);
static_assert(std::has_virtual_destructor_v<CConfigParamsBase> && std::has_virtual_destructor_v<CSSQLFileParser>);
static_assert(std::has_virtual_destructor_v<CSystemInfo> && !std::has_virtual_destructor_v<CHTTPRequestObserver>);

struct CSDNSResolverPeer
{
    using T = CSDNSResolver;
    static_assert(Are({AT(m_hQueueEvent), AT(m_hStopEvent), AT(m_hThread), AT(m_oResultsLock), AT(m_oQueueLock),
                       AT(m_oResultsMap), AT(m_oResolutionQueue), sizeof(T)},
                      {0, 4, 8, 12, 40, 68, 92, 104}, {0, 8, 16, 24, 72, 120, 168, 192}));
};

struct CConfigParamsPeer : CConfigParamsBase
{
    using CConfigParamsBase::OpenKeys;
};

struct CSystemInfoPeer
{
    using T = CSystemInfo;
    static_assert(Are({AT(m_tLastDiskCheck), AT(m_ulFreeDiskMegabytes), AT(m_dFreeDiskPercent), AT(m_oDiskLock),
                       AT(m_sDiskSpaceDirectory)},
                      {4, 8, 16, 24, 52}, {8, 12, 16, 24, 72}));
};

struct CSPortListenerPeer
{
    using T = CSPortListener;
    static_assert(Are({AT(m_bWinsockStarted), AT(m_oListeners), sizeof(T), sizeof(ZVString)}, {4, 8, 20, 8},
                      {8, 16, 40, 16}));
};

struct CSListenerRecordPeer
{
    using T = CSListenerRecord;
    static_assert(Are({AT(m_hSocket), AT(m_pfnHandler), AT(m_hThread), sizeof(T)}, {4, 8, 12, 16}, {4, 8, 16, 24}));
};

struct CHttpServicesPeer
{
    using T = CHttpServices;
    static_assert(Are({AT(m_pSession), AT(m_pConnection), AT(m_pObserver), AT(m_pFile), AT(m_strAppName),
                       AT(m_strUserName), AT(m_strPassword), AT(m_nGetPostType), AT(m_bAbort), AT(m_bSecure),
                       AT(m_nSecurePort), sizeof(T)},
                      {4, 8, 12, 16, 20, 44, 68, 92, 96, 100, 104, 108},
                      {8, 16, 24, 32, 40, 72, 104, 136, 140, 144, 148, 152}));
};

struct CSIMapiPeer
{
    using T = CSIMapi;
    static_assert(Are({AT(m_nLastError), AT(m_strLastError), AT(m_oMessage), AT(m_oOriginator), AT(m_strText),
                       AT(m_lpfnSendMail), sizeof(T)},
                      {4, 8, 32, 80, 104, 128, 132}, {8, 16, 48, 144, 184, 216, 224}));
};

struct CFolderDialogPeer : CFolderDialog
{
    using T = CFolderDialog;
    using T::OnInitialized, T::OnMessage, T::OnSelChanged, T::OnValidateFailed;
    static_assert(Are({sizeof(CWnd), AT(m_oBrowseInfo), AT(m_strDisplayName), AT(m_bBrowseOption), AT(m_pDesktopFolder),
                       AT(m_strStartFolder), AT(m_strCurrentFolder), AT(m_bFolderTyped), sizeof(T)},
                      {12, 12, 44, 68, 72, 76, 100, 124, 128}, {24, 24, 88, 120, 128, 136, 168, 200, 208}));
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

using Slots = std::vector<std::size_t>;
template <class... Operations>
Slots SlotsOf(Operations... pOperations)
{
    return {SlotOf(pOperations)...};
}
}

struct Base64CoderPeer : Base64Coder
{
    using T = Base64CoderPeer;
    static void Expect()
    {
        static_assert(
            Are({AT(m_nBlockSize), AT(m_pBlockBuffer), AT(m_pDecodeBuffer), AT(m_pEncodeBuffer), AT(m_nDecodeCapacity),
                 AT(m_nEncodeCapacity), AT(m_nDecodeSize), AT(m_nEncodeSize), sizeof(T), sizeof(TempBucket)},
                {4, 8, 12, 16, 20, 24, 28, 32, 36, 5}, {8, 16, 24, 32, 40, 44, 48, 52, 56, 5}));
        using Files = int (T::*)(const char*, const char*);
        using Bytes = void (T::*)(BYTE*, unsigned long);
        EXPECT_EQ((SlotsOf<Files, Bytes>(&T::Encode, &T::Encode)), (Slots{2, 3}));
        EXPECT_EQ((SlotsOf<Files, Bytes>(&T::Decode, &T::Decode)), (Slots{4, 5}));
        EXPECT_EQ(SlotsOf(&T::EncodedMessage, &T::AllocDecode, &T::SetDecodeBuffer, &T::_EncodeToBuffer, &T::_EncodeRaw,
                          &T::_IsBadMimeChar),
                  (Slots{7, 9, 11, 13, 15, 17}));
    }
};

TEST(Layout, VirtualOperationsStandInTheirSlots)
{
    EXPECT_EQ(SlotsOf(&CSLockable::Lock, &CSLockable::Unlock), (Slots{0, 1}));
    EXPECT_EQ(SlotsOf(&CSCritSection::Lock, &CSCritSection::Unlock), (Slots{0, 1}));
    using O = CHTTPRequestObserver;
    EXPECT_EQ(SlotsOf(&O::OnContentLength, &O::bOnDataBlock, &O::bKeepRunning, &O::OnRequestEnd, &O::OnDialogShown),
              (Slots{0, 1, 2, 3, 4}));
    EXPECT_EQ(SlotsOf(&CSFolderConsumer::OnFolderFound), Slots{0});
    // Behind the two places that the destructor takes.
    using Z = ZVString;
    EXPECT_EQ(SlotsOf(&Z::Alloc, &Z::GetBuffer, &Z::GetString, &Z::Detach, &Z::Attach), (Slots{2, 3, 4, 5, 6}));
    EXPECT_EQ(SlotsOf(&CConfigParamsPeer::OpenKeys), Slots{2});
    // Behind the window's.
    using F = CFolderDialogPeer;
    EXPECT_EQ(SlotsOf(&F::OnMessage, &F::OnInitialized, &F::OnSelChanged, &F::OnValidateFailed), (Slots{3, 4, 5, 6}));
    Base64CoderPeer::Expect();
}
