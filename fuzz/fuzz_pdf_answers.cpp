// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfProtocol_p.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

using namespace Vantor::Utils;

namespace
{
void Check(bool bTrue)
{
    if (!bTrue)
        std::abort();
}

/// What the library relies on once it has taken an answer.
void CheckAnswer(const SPdfRequest& request, const SPdfAnswer& answer)
{
    const bool bOpen = request.eKind == EPdfRequest::Open;
    Check(std::isfinite(answer.dWidth) && answer.dWidth >= 0.0);
    Check(std::isfinite(answer.dHeight) && answer.dHeight >= 0.0);
    Check(answer.nNumber == request.nNumber);
    Check(answer.nPages == 0 || (bOpen && answer.nPages > 0 && answer.nPages <= kMaxPdfPages));
    Check(answer.nResult >= 0 && answer.nResult <= (bOpen ? 4 : 1));
    Check(!bOpen || (answer.nResult == 0) == (answer.nPages > 0));
}
} // namespace

/// Reads the input as an answer to each kind of request, and as a request. The right first words are put in
/// front, so that more than a handful of inputs gets behind them; without them it is read as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SPdfRequest request;
    request.nNumber = 7;
    const std::size_t nBytes = size + 2 * sizeof(std::uint32_t);
    const std::unique_ptr<std::uint8_t[]> packet(new std::uint8_t[nBytes]); // as long as it is, to the byte
    std::memcpy(packet.get(), &kPdfProtocol, sizeof kPdfProtocol);
    std::memcpy(packet.get() + sizeof kPdfProtocol, &request.nNumber, sizeof request.nNumber);
    if (size > 0)
        std::memcpy(packet.get() + 2 * sizeof(std::uint32_t), data, size);
    for (const EPdfRequest eKind : {EPdfRequest::Open, EPdfRequest::PageSize, EPdfRequest::Render}) {
        request.eKind = eKind;
        SPdfAnswer answer;
        if (ReadPdfAnswer(packet.get(), nBytes, request, answer))
            CheckAnswer(request, answer);
        if (ReadPdfAnswer(data, size, request, answer))
            CheckAnswer(request, answer);
    }
    SPdfRequest read;
    if (ReadPdfRequest(packet.get(), nBytes, read))
        Check(sizeof read + read.nPasswordBytes == nBytes && read.nPasswordBytes <= kMaxPasswordBytes);
    if (ReadPdfRequest(data, size, read))
        Check(sizeof read + read.nPasswordBytes == size);
    return 0;
}
