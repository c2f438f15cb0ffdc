// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>

namespace Vantor::Annotations
{

const std::vector<SFormat>& Formats()
{
    // clang-format off
    static const std::vector<SFormat> formats{
        {kOwnFormat, "vantor.json", IsOwn, ReadOwn, WriteOwn, true},
    };
    // clang-format on
    return formats;
}

} // namespace Vantor::Annotations
