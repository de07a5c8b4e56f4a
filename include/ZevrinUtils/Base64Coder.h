/// @file
/// Bytes as Base64 text, and Base64 text as bytes.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

/// Codes in memory, or from one file to another. The alphabet is the standard one of RFC 4648, padded with '=',
/// without line breaks.
///
///     Base64Coder oCoder;
///     oCoder.Encode(pBytes, nSize);   // oCoder.EncodedMessage() is the text
///
/// An object is a workspace of two sides, one plain and one of text. An operation that codes fills both; they
/// keep what they hold, and their storage, until the next operation on that side. Storage grows in steps of 4096
/// bytes, is used again and never shrinks. Each preparation of a side zeroes all of it.
///
/// Decoding never fails: bad input is not reported, and every text decodes to something, by these rules.
/// - The bytes 0x07 to 0x0D and 0x20 are skipped.
/// - A character with its top bit set counts as the one without it.
/// - Any other character that is not of the alphabet, a zero byte among them, acts as '+'.
/// - '=' in the first or second place of a group of four acts as '/'. In the third place it makes the group one
///   byte long, in the fourth alone two bytes; decoding goes on with the next group.
/// - A last group of fewer than four characters gives one byte for each of them, those that padding or nothing
///   stands for being filled with zero bits. So a text without its padding comes out longer than it went in.
/// - Bytes behind GetDecodeDataSize are zero, but for what the last group wrote there.
///
/// A derived class may replace each virtual operation: all are called as such, whenever they are needed. The one
/// exception is that the file operations code their blocks with this class's own Encode and Decode. Objects of
/// the class itself code many groups at a time, at a multiple of the speed of a derived one.
///
/// Memory that runs out is thrown as std::bad_alloc. A side has at most 4 GiB - 4097 bytes; the want of more is
/// thrown likewise. To encode takes a text side of twice the input. A buffer may be null if its length is 0. The class
/// takes no lock: an object belongs to one thread at a time, and a process's first Decode must be over before a second
/// thread starts one.
class ZEVRINUTILS_API Base64Coder
{
public:
    /// One group on its way through the steps: up to three plain bytes, or four six-bit values.
    class TempBucket
    {
    public:
        BYTE m_aData[4]{};   ///< bytes or values
        BYTE m_nSize = 0;    ///< of the bytes in use; only _EncodeToBuffer reads it

        void Clear() { *this = TempBucket(); }   ///< all zero
    };

    /// No storage on either side yet.
    Base64Coder();

    /// Member by member: both then share their storage, which each of them frees. Keep only one of the two in
    /// use and alive. What an assigned object held is lost. Exported for completeness; not for use.
    Base64Coder(const Base64Coder& oOther);
    Base64Coder& operator=(const Base64Coder& oOther);   ///< likewise

    virtual ~Base64Coder();

    /// Encodes a file of any size into another, which is created or emptied first. 1, or 0 if one of them cannot
    /// be opened (the input is tried first) or a read or a write fails; what was written until then stays.
    /// Both sides then hold the last block. Of an input of 4 GiB or more, only its length modulo 4 GiB is coded,
    /// rounded up to a whole block of 3072 bytes. The call does not return if the input is cut short while it
    /// runs.
    ///
    /// @throws CFileException*  the length of the input cannot be had, or a file not be closed. The catcher calls
    ///         Delete; the output keeps what was written.
    virtual int Encode(const char* pszInputFile, const char* pszOutputFile);

    /// Encodes so many bytes: four characters for each started group of three, then a zero. The buffer must not
    /// be the object's own. It is copied to the plain side. A fresh object stays without storage if there are
    /// no bytes.
    virtual void Encode(BYTE* const pBuffer, unsigned long nLength);

    /// Decodes a file like Encode does. Each block of 3072 characters is decoded by itself: it must hold a
    /// multiple of four characters that are not skipped, as the text that Encode writes does. Texts with line
    /// breaks in them are for the other overload.
    virtual int Decode(const char* pszInputFile, const char* pszOutputFile);

    /// Decodes so many characters; a zero among them ends nothing. The buffer must not be the object's own. The
    /// text side then holds what was not skipped.
    virtual void Decode(BYTE* const pBuffer, unsigned long nLength);

    /// The plain side, GetDecodeDataSize bytes long; null while there is no storage. It stays the object's.
    virtual const char* DecodedMessage() const;

    /// The text side; null while there is no storage. Ended by a zero after Encode, whose text holds no other.
    /// It stays the object's.
    virtual const char* EncodedMessage() const;

    /// Prepares the text side: room for so many bytes, all of it zero, and its size 0. Zero bytes need no storage.
    virtual void AllocEncode(unsigned long nSize);
    virtual void AllocDecode(unsigned long nSize);   ///< prepares the plain side likewise

    /// Loads the text side with what the filter lets pass of so many characters.
    virtual void SetEncodeBuffer(BYTE* const pBuffer, unsigned long nLength);

    /// Loads the plain side with so many bytes.
    virtual void SetDecodeBuffer(BYTE* const pBuffer, unsigned long nLength);

    /// Bytes on the plain side. Of no meaning before the first operation on it.
    virtual unsigned long GetDecodeDataSize();

protected:
    /// The four characters of a group of one to three bytes.
    virtual void _EncodeToBuffer(const TempBucket& oGroup, BYTE* pOut);

    /// The three bytes of a group of values; gives how many of them are not 0xFF, which Decode does not use.
    virtual unsigned long _DecodeToBuffer(const TempBucket& oGroup, BYTE* pOut);

    /// Three bytes to four values of six bits.
    virtual void _EncodeRaw(TempBucket& oOut, const TempBucket& oIn);

    /// Four values, of which only the low six bits count, to three bytes.
    virtual void _DecodeRaw(TempBucket& oOut, const TempBucket& oIn);

    /// The filter: 1 for a character that is skipped, otherwise 0.
    virtual int _IsBadMimeChar(BYTE nChar);

    /// Fills m_DecodeTable.
    void _Init();

    unsigned int m_nBlockSize = 3072;     ///< of the file operations
    BYTE* m_pBlockBuffer = nullptr;       ///< so many bytes, from the first block on
    BYTE* m_pDecodeBuffer = nullptr;      ///< the plain side
    BYTE* m_pEncodeBuffer = nullptr;      ///< the text side
    unsigned int m_nDecodeCapacity = 0;   ///< bytes allocated on the plain side
    unsigned int m_nEncodeCapacity = 0;   ///< and on the text side
    unsigned int m_nDecodeSize = 0;       ///< bytes in use on the plain side
    unsigned int m_nEncodeSize = 0;       ///< and on the text side

    static char m_DecodeTable[256];   ///< by character: its value, 0xFF for padding, 0xFE for others
    static int m_Init;                ///< 1 once the table is filled
};
