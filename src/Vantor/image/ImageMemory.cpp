// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageMemory.h>

#include <Vantor/Messages_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageLoad_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <QFile>

#include <new>

namespace Vantor::Algorithms
{

std::uint64_t MemoryToLoad(const std::wstring& path)
try {
    QFile file;
    if (!OpenRegularFile(path, file))
        return 0;
    const CNoMessages silence; // Load will report the same
    const CDecodeMeasure measure;
    CImage none;
    SFound found;
    static_cast<void>(LoadImageFrom(file, none, found)); // it always fails
    return measure.GetBytes();
} catch (const std::bad_alloc&) {
    return 0;
}

} // namespace Vantor::Algorithms
