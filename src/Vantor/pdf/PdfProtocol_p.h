// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What the library and the program that reads documents say to each other, over a socket that keeps packets
// apart: one request, one answer, each a packet. Both ends run on one machine, so numbers are in its order.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Vantor::Utils
{

/// The first word of every packet; another one means another version of the other end.
constexpr std::uint32_t kPdfProtocol = 0x56504401;
/// The program's end of the socket.
constexpr int kPdfSocket = 3;
/// The longest password in bytes of UTF-8; the format itself knows 127.
constexpr std::size_t kMaxPasswordBytes = 1024;
/// The format's own limit of objects, and so of pages.
constexpr std::int32_t kMaxPdfPages = 8388607;

enum class EPdfRequest : std::uint32_t {
    Open = 1,     ///< with the document as a file, and behind the request the password in UTF-8
    PageSize = 2, ///< of nPage
    Render = 3    ///< nPage into the file that comes with the request
};

struct SPdfRequest {
    std::uint32_t nProtocol = kPdfProtocol;
    EPdfRequest eKind = EPdfRequest::Open;
    std::uint32_t nNumber = 0; ///< comes back with the answer
    std::int32_t nPage = 0;
    std::int32_t nWidth = 0;  ///< in pixels of three bytes: red, green, blue
    std::int32_t nHeight = 0; ///< rows
    std::int32_t nStride = 0; ///< bytes from row to row
    std::uint32_t nPasswordBytes = 0;
    double dDpiX = 0.0;
    double dDpiY = 0.0;
};
static_assert(sizeof(SPdfRequest) == 48, "there are no gaps");

struct SPdfAnswer {
    std::uint32_t nProtocol = kPdfProtocol;
    std::uint32_t nNumber = 0;
    std::int32_t nResult = 0; ///< Open: a CPDFReader::EReadResult; otherwise 0 or 1
    std::int32_t nPages = 0;  ///< Open: at least 1 after EReadResult_OK
    double dWidth = 0.0;      ///< PageSize: in points; 0 for a page that cannot be read
    double dHeight = 0.0;
};
static_assert(sizeof(SPdfAnswer) == 32, "there are no gaps");

/// Reads an answer, which is not trusted: length, version, number and each value are checked, and what the
/// kind of request does not use has to be 0.
/// @return false for anything else than an answer to this request; `answer` then holds nothing of use
bool ReadPdfAnswer(const void* pPacket, std::size_t nBytes, const SPdfRequest& request, SPdfAnswer& answer);

/// Reads a request, whose password follows it. The same care, because it is as easy.
bool ReadPdfRequest(const void* pPacket, std::size_t nBytes, SPdfRequest& request);

} // namespace Vantor::Utils
