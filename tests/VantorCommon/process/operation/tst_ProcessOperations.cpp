// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The library's operations, each by its dialog and compared with the call of the core that it stands for.
#include "OperationBench.h"
#include "tests/support/TestMain.h"

#include <functional>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;

namespace
{
constexpr ERegionMode kInside = ERegionMode::Inside;

using Filter = std::function<int(CImage& image, const CGeometry* pRegion)>;

/// Values as they are put into the rows, and what a run then has to call.
struct SCase {
    const char* pTitle;
    std::vector<QVariant> vctValues; ///< empty: as the tool opens
    Filter filter;
};

const SCase kCases[] = {
    {"Gaussian Blur",
     {},
     [](CImage& image, const CGeometry* p) { return image.GaussianBlur(2.0, p, kInside, 0.0); }},
    {"Gaussian Blur",
     {4.5},
     [](CImage& image, const CGeometry* p) { return image.GaussianBlur(4.5, p, kInside, 0.0); }},
    {"Unsharp Mask",
     {},
     [](CImage& image, const CGeometry* p) { return image.UnsharpMask(2.0, 1.0, p, kInside, 0.0); }},
    {"Unsharp Mask",
     {1.5, 3.0},
     [](CImage& image, const CGeometry* p) { return image.UnsharpMask(1.5, 3.0, p, kInside, 0.0); }},
    {"Threshold",
     {},
     [](CImage& image, const CGeometry* p) { return image.Threshold(128, p, kInside, 0.0); }},
    {"Threshold",
     {QStringLiteral("Value"), 90},
     [](CImage& image, const CGeometry* p) { return image.Threshold(90, p, kInside, 0.0); }},
    {"Threshold",
     {QStringLiteral("Otsu")},
     [](CImage& image, const CGeometry* p) { return image.ThresholdByOtsu(p, kInside, 0.0); }},
    {"Threshold",
     {QStringLiteral("Adaptive mean"), 90, 7, -3.5},
     [](CImage& image, const CGeometry* p) { return image.ThresholdByMean(7, -3.5, p, kInside, 0.0); }},
    {"Brightness, Contrast, Gamma",
     {0.1, 1.5, 2.2},
     [](CImage& image, const CGeometry* p) { return image.AdjustTones(0.1, 1.5, 2.2, p, kInside, 0.0); }},
    {"Invert", {}, [](CImage& image, const CGeometry* p) { return image.Invert(p, kInside, 0.0); }},
};
} // namespace

class tst_ProcessOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRunIsTheCallOfTheCore_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("region");
        for (int i = 0; i < int(std::size(kCases)); ++i)
            for (const bool bRegion : {false, true})
                QTest::addRow("%d %s%s", i, kCases[i].pTitle, bRegion ? ", in a region" : "") << i << bRegion;
    }
    void aRunIsTheCallOfTheCore()
    {
        QFETCH(int, index);
        QFETCH(bool, region);
        const SCase& each = kCases[index];
        OperationBench b(QString::fromLatin1(each.pTitle));
        for (std::size_t i = 0; i < each.vctValues.size(); ++i)
            b.Set(static_cast<int>(i), each.vctValues[i]);
        if (region)
            b.DrawRegion();
        const auto pRegion = region ? b.Region() : nullptr;
        const auto pBefore = b.Image();
        const QByteArray expected =
            PixelsAfter(*pBefore, [&](CImage& copy) { QCOMPARE(each.filter(copy, pRegion.get()), 0); });
        QVERIFY(expected != PixelsOf(*pBefore));
        b.parts->ClickRun();
        QVERIFY(b.Image() != pBefore);
        QCOMPARE(PixelsOf(*b.Image()), expected);
    }

    void neutralTonesChangeNothing()
    {
        OperationBench b(QStringLiteral("Brightness, Contrast, Gamma"));
        const QByteArray before = PixelsOf(*b.Image());
        b.parts->ClickRun();
        QCOMPARE(PixelsOf(*b.Image()), before);
    }

    void whatTheCoreRefusesIsTold()
    {
        OperationBench b(QStringLiteral("Invert"));
        const auto pWide = std::make_shared<CImage>();
        QCOMPARE(pWide->Create(20, 10, 1, 16, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        b.fixture.Ctrl(0)->ChangeCurrentImage(pWide);
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), QStringLiteral("Only images of 8 bits per channel can be filtered."));
        QVERIFY(b.Image() == pWide);
    }
};

VANTOR_TEST_MAIN(tst_ProcessOperations)
#include "tst_ProcessOperations.moc"
