// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

unsigned char TestImageByte(int x, int y, int channel, int seed)
{
    return static_cast<unsigned char>(37 * x + 59 * y + 101 * channel + seed);
}

std::shared_ptr<CImage> MakeTestImage(int width, int height, int channels, int seed)
{
    auto image = std::make_shared<CImage>();
    if (image->Create(width, height, channels, 8, EImageType::Interleaved, 4) != 0)
        return nullptr;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c)
                image->GetPixel(x, y)[c] = TestImageByte(x, y, c, seed);
    return image;
}

QString TestDataPath(const QString& relative)
{
    return QStringLiteral(VANTOR_TEST_DATA "/") + relative;
}
