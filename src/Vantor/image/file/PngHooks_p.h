// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/CodecState_p.h>

#include <png.h>

/// What libpng calls when it has something to say; its error pointer is the CCodecState of the file.
namespace Vantor::Algorithms::PngHooks
{
[[noreturn]] inline void OnError(png_structp pPng, png_const_charp pText)
{
    static_cast<CCodecState*>(png_get_error_ptr(pPng))->Fail(pText);
}

inline void OnWarning(png_structp pPng, png_const_charp pText)
{
    static_cast<CCodecState*>(png_get_error_ptr(pPng))->Note(pText);
}
} // namespace Vantor::Algorithms::PngHooks
