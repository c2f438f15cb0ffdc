// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfProtocol_p.h>

#include <Vantor/pdf/CPDFReader.h>

#include <cmath>
#include <cstring>

namespace Vantor::Utils
{

namespace
{
bool IsLength(double points)
{
    return std::isfinite(points) && points >= 0.0;
}

bool IsAnswerToOpen(const SPdfAnswer& answer)
{
    switch (answer.nResult) {
    case CPDFReader::EReadResult_OK:
        return answer.nPages >= 1 && answer.nPages <= kMaxPdfPages;
    case CPDFReader::EReadResult_NotAPdf:
    case CPDFReader::EReadResult_NoMemory:
    case CPDFReader::EReadResult_PasswordRequired:
        return answer.nPages == 0;
    default:
        return false;
    }
}
} // namespace

bool ReadPdfAnswer(const void* pPacket, std::size_t nBytes, const SPdfRequest& request, SPdfAnswer& answer)
{
    if (nBytes != sizeof answer)
        return false;
    std::memcpy(&answer, pPacket, sizeof answer);
    if (answer.nProtocol != kPdfProtocol || answer.nNumber != request.nNumber)
        return false;
    if (request.eKind == EPdfRequest::PageSize)
        return answer.nResult == 0 && answer.nPages == 0 && IsLength(answer.dWidth) &&
               IsLength(answer.dHeight);
    if (answer.dWidth != 0.0 || answer.dHeight != 0.0)
        return false;
    if (request.eKind == EPdfRequest::Open)
        return IsAnswerToOpen(answer);
    return (answer.nResult == 0 || answer.nResult == 1) && answer.nPages == 0;
}

bool ReadPdfRequest(const void* pPacket, std::size_t nBytes, SPdfRequest& request)
{
    if (nBytes < sizeof request)
        return false;
    std::memcpy(&request, pPacket, sizeof request);
    const auto nKind = static_cast<std::uint32_t>(request.eKind);
    return request.nProtocol == kPdfProtocol && nKind >= 1 && nKind <= 3 &&
           request.nPasswordBytes <= kMaxPasswordBytes && nBytes == sizeof request + request.nPasswordBytes;
}

} // namespace Vantor::Utils
