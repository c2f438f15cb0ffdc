// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

int main()
{
    using namespace Vantor::Algorithms;
    CImage image;
    return image.Create(3, 2, 1, 8, EImageType::Interleaved, 1) == 0 && image.GetPixel(2, 1) ? 0 : 1;
}
