// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/process/ToolBench.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/process/sobel/CImage2DProcessSobel.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;

namespace
{
using SobelFilter = int (CImage::*)(const Vantor::Geometry::CGeometry*, ERegionMode, double);
constexpr SobelFilter kFilters[] = {&CImage::SobelX, &CImage::SobelY, &CImage::SobelXY};

QByteArray EdgesOf(const CImage& image, SobelFilter filter)
{
    return PixelsAfter(
        image, [filter](CImage& copy) { QCOMPARE((copy.*filter)(nullptr, ERegionMode::Inside, 0.0), 0); });
}
} // namespace

class tst_CImage2DProcessSobelCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachTypeCallsOnlyItsFilter_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("EImage2DProcessSobelX") << static_cast<int>(::EImage2DProcessSobelX);
        QTest::newRow("EImage2DProcessSobelY") << static_cast<int>(::EImage2DProcessSobelY);
        QTest::newRow("EImage2DProcessSobelXY") << static_cast<int>(::EImage2DProcessSobelXY);
    }
    void eachTypeCallsOnlyItsFilter()
    {
        QFETCH(int, type);
        ToolBench<SobelTool> b;
        const auto pBefore = b.Image();
        QVERIFY(b.parts.OpenEditor(1));
        for (int i = 0; i < type; ++i)
            b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Return);
        QTRY_VERIFY(!b.parts.Editor());
        QCOMPARE(b.parts.Cell(0, 1), QString::fromLatin1(QTest::currentDataTag()));
        b.parts.ClickRun();
        for (int i = 0; i < 3; ++i)
            QCOMPARE(b.Pixels() == EdgesOf(*pBefore, kFilters[i]), i == type);
    }

    void deliberateAnUnknownTypeGivesAnIdenticalCopyAndTheTime()
    {
        ToolBench<SobelTool> b;
        const auto pBefore = b.Image();
        QVERIFY(b.parts.OpenEditor(0));
        b.parts.Type(QStringLiteral("none"));
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(static_cast<int>(b.model.GetType()), -1);
        LogRecorder log;
        b.parts.ClickRun();
        QVERIFY(b.Image() != pBefore);
        QCOMPARE(b.Pixels(), PixelsOf(*pBefore));
        QVERIFY(b.parts.Message().startsWith(QStringLiteral("Processing Time ")));
        QVERIFY(log.Take().contains(QStringLiteral("%1:").arg(NORMAL) + b.parts.Message()));
    }

    void deliberateAFilterThatFailsGivesTheCopyAndTheTimeToo()
    {
        ToolBench<SobelTool> b;
        auto pDeep = std::make_shared<CImage>();
        QCOMPARE(pDeep->Create(20, 10, 1, 16, EImageType::Interleaved, 1), 0);
        b.SetImage(pDeep);
        b.parts.ClickRun();
        QVERIFY(b.Image() != pDeep);
        QCOMPARE(b.Pixels(), PixelsOf(*pDeep));
        QVERIFY(b.parts.Message().startsWith(QStringLiteral("Processing Time ")));
        QVERIFY(!b.ctrl.GetFailureReason().isEmpty());
    }

    void deliberateTheEndOfTheOperationDoesNothing()
    {
        CImage2DProcessSobel operation;
        operation.End();
        struct Ended : CImage2DProcessSobel {
            void End() override { bEnded = true; }
            bool bEnded = false;
        } derived;
        CImage2DProcessSobel& base = derived;
        base.End();
        QVERIFY(derived.bEnded);
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessSobelCtrl)
#include "tst_CImage2DProcessSobelCtrl.moc"
