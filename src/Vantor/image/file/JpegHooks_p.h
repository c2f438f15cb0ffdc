// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstdio> // which the next one needs

#include <jpeglib.h>

/// How libjpeg is heard. Nothing here has a destructor, for its errors leave by a jump.
namespace Vantor::Algorithms::JpegHooks
{
/// Has a codec report to two functions, which find their object in its client_data.
/// @param errors  must outlive the codec
template <class Codec>
void Install(Codec& codec, jpeg_error_mgr& errors, void* pObject, void (*onError)(j_common_ptr),
             void (*onMessage)(j_common_ptr, int))
{
    codec.err = jpeg_std_error(&errors);
    codec.client_data = pObject;
    errors.error_exit = onError;
    errors.emit_message = onMessage;
}

/// What a codec has to say just now.
struct SText {
    char szText[JMSG_LENGTH_MAX];

    explicit SText(j_common_ptr pCodec) { pCodec->err->format_message(pCodec, szText); }
};
} // namespace Vantor::Algorithms::JpegHooks
