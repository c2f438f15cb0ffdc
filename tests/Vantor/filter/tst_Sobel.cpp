// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/filter/FilterModel.h"
#include "tests/support/TestMain.h"

using namespace FilterModel;

namespace
{
using Member = int (CImage::*)(const CGeometry*, ERegionMode, double);

struct Kind {
    Member member;
    Value value;
};

Kind KindOf(const QString& name)
{
    const auto cut = [](double value) { return static_cast<unsigned char>(std::min(value, 255.0)); };
    if (name == QLatin1String("X"))
        return {&CImage::SobelX, [=](const CImage& image, int x, int y, int c) {
                    return cut(std::abs(GradientX(image, x, y, c)));
                }};
    if (name == QLatin1String("Y"))
        return {&CImage::SobelY, [=](const CImage& image, int x, int y, int c) {
                    return cut(std::abs(GradientY(image, x, y, c)));
                }};
    return {&CImage::SobelXY, [=](const CImage& image, int x, int y, int c) {
                const double gx = GradientX(image, x, y, c);
                const double gy = GradientY(image, x, y, c);
                return cut(std::round(std::sqrt(gx * gx + gy * gy)));
            }};
}

void AddKinds()
{
    QTest::addColumn<QString>("kind");
    for (const char* pKind : {"X", "Y", "XY"})
        QTest::newRow(pKind) << QString::fromLatin1(pKind);
}
} // namespace

class tst_Sobel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalsTheModelInEveryRegion_data();
    void equalsTheModelInEveryRegion();
    void everyPairOfGradientsIsRounded();
    void twoThreadsEqualOne_data() { AddKinds(); }
    void twoThreadsEqualOne();
    void sixteenBitsAreRefused_data() { AddKinds(); }
    void sixteenBitsAreRefused();
    void objectBufferAndIdentifierStay_data() { AddKinds(); }
    void objectBufferAndIdentifierStay();
    void alphaIsLeftAlone();
};

void tst_Sobel::equalsTheModelInEveryRegion_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("channels");
    for (const QString& strKind : {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("XY")}) {
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            QTest::addRow("%s, %d channels", qPrintable(strKind), nChannels) << strKind << nChannels;
    }
}

void tst_Sobel::equalsTheModelInEveryRegion()
{
    QFETCH(QString, kind);
    QFETCH(int, channels);
    const Kind sobel = KindOf(kind);
    const auto filter = [&](CImage& image, const CGeometry* region, ERegionMode mode, double tolerance) {
        return (image.*sobel.member)(region, mode, tolerance);
    };
    int nTurn = channels;
    for (const Size& size : kSizes) {
        const ImagePtr image = MakeNoise(size.nWidth, size.nHeight, channels, size.nRowAlignment, 17);
        QCOMPARE(FirstDifference(*image, filter, sobel.value, {0.0, 1.5, -1.5}, nTurn++), QString());
    }
}

void tst_Sobel::everyPairOfGradientsIsRounded()
{
    // Each 3x3 cell has |Gx| = a and |Gy| = b in its middle: bytes a / 2 and so on would miss the odd ones.
    CImage image;
    QCOMPARE(image.Create(3 * 256, 3 * 256, 1, 8, EImageType::Interleaved, 1), 0);
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const int x = 3 * a, y = 3 * b;
            *image.GetPixel(x + 2, y + 1) = static_cast<unsigned char>(a / 2); // Gx = 2 (a / 2) ...
            *image.GetPixel(x + 1, y + 2) = static_cast<unsigned char>(b / 2);
            *image.GetPixel(x + 2, y + 2) = static_cast<unsigned char>((a + b) % 2); // ... and both + 0 or 1
        }
    }
    const Kind sobel = KindOf(QStringLiteral("XY"));
    ForEachInstructionSet([&](const char* pName) {
        const ImagePtr result = CopyOf(image);
        QCOMPARE(result->SobelXY(nullptr, ERegionMode::All, 0.0), 0);
        for (int y = 1; y < 768; y += 3) {
            for (int x = 1; x < 768; x += 3) {
                if (*result->GetPixel(x, y) != sobel.value(image, x, y, 0))
                    QFAIL(qPrintable(QStringLiteral("%1 at %2, %3").arg(QLatin1String(pName)).arg(x).arg(y)));
            }
        }
    });
}

void tst_Sobel::twoThreadsEqualOne()
{
    QFETCH(QString, kind);
    const Kind sobel = KindOf(kind);
    const ImagePtr image = MakeNoise(1801, 2400, 3, 1, 18);
    const ImagePtr expected = CopyOf(*image);
    // Four parts, each small enough for one thread.
    for (int i = 0; i < 4; ++i) {
        const ImagePtr part = CopyOf(*image);
        const Vantor::Geometry::CRectangle rows(0, i * 600, 1801, 600);
        QCOMPARE(((*part).*sobel.member)(&rows, ERegionMode::Inside, 0.0), 0);
        std::memcpy(expected->GetPixel(0, i * 600), part->GetPixel(0, i * 600),
                    600 * static_cast<std::size_t>(part->GetStride()));
    }
    QCOMPARE(((*image).*sobel.member)(nullptr, ERegionMode::All, 0.0), 0);
    QVERIFY(AreEqual(*image, *expected));
}

void tst_Sobel::sixteenBitsAreRefused()
{
    QFETCH(QString, kind);
    CImage image;
    QCOMPARE(image.Create(8, 8, 3, 16, EImageType::Interleaved, 1), 0);
    image.GetData()[7] = 99;
    const ImagePtr original = CopyOf(image);
    QVERIFY((image.*KindOf(kind).member)(nullptr, ERegionMode::Inside, 0.0) != 0);
    QVERIFY(AreEqual(image, *original));
    QCOMPARE(image.GetFailureReason(), std::string("Only images of 8 bits per channel can be filtered."));
}

void tst_Sobel::objectBufferAndIdentifierStay()
{
    QFETCH(QString, kind);
    const ImagePtr image = MakeNoise(40, 30, 3, 1, 13);
    const unsigned char* pData = image->GetData();
    const unsigned int nUID = image->GetUID();
    QCOMPARE(((*image).*KindOf(kind).member)(nullptr, ERegionMode::Inside, 0.0), 0);
    QCOMPARE(static_cast<const CImage&>(*image).GetData(), pData);
    QCOMPARE(image->GetUID(), nUID);
}

void tst_Sobel::alphaIsLeftAlone()
{
    for (const int nChannels : {2, 4}) {
        const ImagePtr image = MakeNoise(50, 40, nChannels, 1, 19);
        const ImagePtr original = CopyOf(*image);
        QCOMPARE(image->SobelXY(nullptr, ERegionMode::Inside, 0.0), 0);
        bool bColorsChanged = false;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 50; ++x) {
                QCOMPARE(image->GetPixel(x, y)[nChannels - 1], original->GetPixel(x, y)[nChannels - 1]);
                bColorsChanged = bColorsChanged || image->GetPixel(x, y)[0] != original->GetPixel(x, y)[0];
            }
        }
        QVERIFY(bColorsChanged);
    }
}

VANTOR_CORE_TEST_MAIN(tst_Sobel)
#include "tst_Sobel.moc"
