// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffHandle_p.h>

#include <Vantor/Messages_p.h>
#include <Vantor/image/CImage.h>

#include <QIODevice>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
QIODevice& DeviceOf(thandle_t handle)
{
    return *static_cast<QIODevice*>(handle);
}

tmsize_t ReadBytes(thandle_t handle, void* pTo, tmsize_t nBytes)
{
    return static_cast<tmsize_t>(DeviceOf(handle).read(static_cast<char*>(pTo), nBytes));
}

tmsize_t WriteBytes(thandle_t handle, void* pFrom, tmsize_t nBytes)
{
    return static_cast<tmsize_t>(DeviceOf(handle).write(static_cast<const char*>(pFrom), nBytes));
}

toff_t Seek(thandle_t handle, toff_t nOffset, int nWhence)
{
    QIODevice& device = DeviceOf(handle);
    const qint64 nBase = nWhence == SEEK_SET ? 0 : nWhence == SEEK_CUR ? device.pos() : device.size();
    const qint64 nTarget = nBase + static_cast<qint64>(nOffset);
    return device.seek(nTarget) ? static_cast<toff_t>(nTarget) : static_cast<toff_t>(-1);
}

toff_t SizeOf(thandle_t handle)
{
    return static_cast<toff_t>(DeviceOf(handle).size());
}

int CloseNothing(thandle_t)
{
    return 0;
}

/// Reports the first message about each file, because a damaged one can cause thousands. A thread has one
/// file open.
thread_local bool t_bTold = false;

[[gnu::format(printf, 4, 0)]] int Tell(TIFF*, void*, const char* /*module*/, const char* format,
                                       va_list arguments)
{
    constexpr std::size_t kMostBytes = 256;
    char text[kMostBytes];
    if (!std::exchange(t_bTold, true) && std::vsnprintf(text, sizeof(text), format, arguments) >= 0)
        TellMessage("libtiff", text);
    return 1;
}
} // namespace

TiffHandle OpenTiff(QIODevice& device, const char* mode)
{
    const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                               TIFFOpenOptionsFree);
    if (!options)
        return nullptr;
    t_bTold = false;
    constexpr std::size_t kMost = static_cast<std::size_t>(std::numeric_limits<tmsize_t>::max());
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(),
                                        static_cast<tmsize_t>(std::min(CImage::GetDecodeLimit(), kMost)));
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), Tell, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), Tell, nullptr);
    return TiffHandle(TIFFClientOpenExt("", mode, &device, ReadBytes, WriteBytes, Seek, CloseNothing, SizeOf,
                                        nullptr, nullptr, options.get()));
}

} // namespace Vantor::Algorithms
