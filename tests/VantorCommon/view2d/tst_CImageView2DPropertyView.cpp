// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CImageView2DPropertyView.h>
#include <VantorCommon/view2d/PixelText_p.h>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <limits>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
QString Initial()
{
    return QStringLiteral("Width: |Height: |Channel: |BitDepth: |ImageType: |X: |Y: |Pixel: ");
}

/// A model and its property view, read by grid cell.
struct SFixture {
    CImageView2DModel model;
    CImageView2DPropertyView view{&model, nullptr};

    const QGridLayout* Grid() const
    {
        return qobject_cast<QGridLayout*>(view.layout()->itemAt(0)->widget()->layout());
    }
    QString Text(int nRow, int nColumn) const
    {
        return qobject_cast<QLabel*>(Grid()->itemAtPosition(nRow, nColumn)->widget())->text();
    }
    QString Texts() const
    {
        return QStringList{Text(0, 0), Text(0, 1), Text(1, 0), Text(1, 1),
                           Text(2, 0), Text(3, 0), Text(4, 0), Text(5, 0)}
            .join(QLatin1Char('|'));
    }
    QString Format() const { return Texts().section(QLatin1Char('|'), 0, 4); }
    QString Position() const { return Texts().section(QLatin1Char('|'), 5, 6); }
    QString Pixel() const { return Text(5, 0); }
};
} // namespace

class tst_CImageView2DPropertyView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLabelsStandInTheirCellsWithTheirInitialTexts()
    {
        const SFixture f;
        const auto* pLayout = qobject_cast<QVBoxLayout*>(f.view.layout());
        QVERIFY(pLayout);
        QCOMPARE(pLayout->count(), 2);
        QVERIFY(f.Grid());
        QCOMPARE(f.Grid()->count(), 8);
        QCOMPARE(f.Texts(), Initial());
        const QWidget* pSecond = pLayout->itemAt(1)->widget();
        QVERIFY(pSecond);
        QVERIFY(pSecond->children().isEmpty());
    }

    void aNewCurrentImageShowsItsSizeAndFormat()
    {
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, 3));
        QCOMPARE(f.Format(), QStringLiteral("Width: 13|Height: 7|Channel: 3|BitDepth: 8|ImageType: 0"));
        QCOMPARE(f.Position(), QStringLiteral("X: |Y: "));
        QCOMPARE(f.Pixel(), QStringLiteral("Pixel: "));
        auto pDeep = std::make_shared<CImage>();
        QCOMPARE(pDeep->Create(5, 4, 1, 16, EImageType::Interleaved, 4), 0);
        f.model.SetCurrentImage(pDeep);
        QCOMPARE(f.Format(), QStringLiteral("Width: 5|Height: 4|Channel: 1|BitDepth: 16|ImageType: 0"));
    }

    void aForgottenMousePositionEmptiesPositionAndPixelAlone()
    {
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, 3));
        f.model.SetMousePosition(QPointF(2, 1));
        QVERIFY(f.Pixel() != QStringLiteral("Pixel: "));
        f.model.ForgetMousePosition();
        QCOMPARE(f.Position(), QStringLiteral("X: |Y: "));
        QCOMPARE(f.Pixel(), QStringLiteral("Pixel: "));
        QCOMPARE(f.Format(), QStringLiteral("Width: 13|Height: 7|Channel: 3|BitDepth: 8|ImageType: 0"));
    }

    void theMouseShowsPositionAndPixel_data()
    {
        QTest::addColumn<int>("nChannels");
        QTest::addColumn<QString>("strPixel");
        // The bytes of pixel (2, 1) are 133, 234, 79, 180: 37 x + 59 y + 101 c, modulo 256.
        QTest::newRow("1") << 1 << QStringLiteral("Pixel: [133]");
        QTest::newRow("2") << 2 << QStringLiteral("Pixel: [133, 234]");
        QTest::newRow("3") << 3 << QStringLiteral("Pixel: [133, 234, 79]");
        QTest::newRow("4") << 4 << QStringLiteral("Pixel: [133, 234, 79, 180]");
    }

    void theMouseShowsPositionAndPixel()
    {
        QFETCH(int, nChannels);
        QFETCH(QString, strPixel);
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, nChannels));
        f.model.SetMousePosition(QPointF(2.9996, 1.25));
        QCOMPARE(f.Position(), QStringLiteral("X: 3.000|Y: 1.250"));
        QCOMPARE(f.Pixel(), strPixel); // the coordinates are cut off, not rounded
    }

    void aThreeChannelPixelReadsAsDecimalBytes()
    {
        SFixture f;
        const auto pImage = MakeTestImage(13, 7, 3);
        const unsigned char bytes[] = {12, 200, 7};
        std::copy(std::begin(bytes), std::end(bytes), pImage->GetPixel(4, 5));
        f.model.PushImage(pImage);
        f.model.SetMousePosition(QPointF(4, 5));
        QCOMPARE(f.Pixel(), QStringLiteral("Pixel: [12, 200, 7]"));
    }

    void movingOutsideTheImageUpdatesThePositionAndLeavesThePixel_data()
    {
        QTest::addColumn<QPointF>("ptPosition");
        QTest::addColumn<QString>("strPosition");
        QTest::newRow("left and above") << QPointF(-4.5, -1.0) << QStringLiteral("X: -4.500|Y: -1.000");
        QTest::newRow("right") << QPointF(13.0, 1.0) << QStringLiteral("X: 13.000|Y: 1.000");
        QTest::newRow("below") << QPointF(1.0, 7.5) << QStringLiteral("X: 1.000|Y: 7.500");
        QTest::newRow("far") << QPointF(1e12, -1e12)
                             << QStringLiteral("X: 1000000000000.000|Y: -1000000000000.000");
        QTest::newRow("infinite") << QPointF(std::numeric_limits<double>::infinity(), 0.0)
                                  << QStringLiteral("X: inf|Y: 0.000");
    }

    void movingOutsideTheImageUpdatesThePositionAndLeavesThePixel()
    {
        QFETCH(QPointF, ptPosition);
        QFETCH(QString, strPosition);
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, 1));
        f.model.SetMousePosition(QPointF(2, 1));
        f.model.SetMousePosition(ptPosition);
        QCOMPARE(f.Position(), strPosition);
        QCOMPARE(f.Pixel(), QStringLiteral("Pixel: [133]"));
    }

    void truncationTowardZeroKeepsTheFirstPixelUpToMinusOne()
    {
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, 1, 42));
        f.model.SetMousePosition(QPointF(-0.9, -0.9));
        QCOMPARE(f.Pixel(), QStringLiteral("Pixel: [42]"));
    }

    void forAnImageTypeOtherThanZeroThereIsNoPixelText()
    {
        const unsigned char bytes[] = {12, 200, 7};
        QCOMPARE(PixelText(EImageType::Interleaved, bytes, 3), QStringLiteral("Pixel: [12, 200, 7]"));
        QVERIFY(PixelText(static_cast<EImageType>(1), bytes, 3).isEmpty());
        QVERIFY(PixelText(EImageType::Interleaved, nullptr, 3).isEmpty());
    }

    void withoutACurrentImageTheMouseChangesNothing()
    {
        SFixture f;
        f.model.SetMousePosition(QPointF(3, 4));
        QCOMPARE(f.Texts(), Initial());
    }

    void withoutACurrentImageAllLabelsGoBackToTheirInitialTexts()
    {
        SFixture f;
        f.model.PushImage(MakeTestImage(13, 7, 3));
        f.model.SetMousePosition(QPointF(2, 1));
        QVERIFY(f.Pixel() != QStringLiteral("Pixel: "));
        f.model.CloseCurrentImage();
        QCOMPARE(f.Texts(), Initial());
    }

    void withoutAModelNothingHappens()
    {
        CImageView2DPropertyView view(nullptr, nullptr);
        view.slot_ChangeCurrentImage();
        view.slot_ChangeMousePosition();
        QCOMPARE(view.findChildren<QLabel*>().first()->text(), QStringLiteral("Width: "));

        auto pModel = std::make_unique<CImageView2DModel>();
        CImageView2DPropertyView orphan(pModel.get(), nullptr);
        pModel.reset();
        orphan.slot_ChangeCurrentImage();
        orphan.slot_ChangeMousePosition();
        QCOMPARE(orphan.findChildren<QLabel*>().first()->text(), QStringLiteral("Width: "));
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DPropertyView)
#include "tst_CImageView2DPropertyView.moc"
