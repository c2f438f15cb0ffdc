// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>

#include <cstring>

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

bool SamePixels(const CImage& a, const CImage& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight() || a.GetChannel() != b.GetChannel())
        return false;
    const auto nRow = static_cast<std::size_t>(a.GetWidth() * a.GetChannel());
    for (int y = 0; y < a.GetHeight(); ++y) {
        if (std::memcmp(a.GetRows()[y], b.GetRows()[y], nRow) != 0)
            return false;
    }
    return true;
}

QString TestDataPath(const QString& relative)
{
    return QStringLiteral(VANTOR_TEST_DATA "/") + relative;
}
