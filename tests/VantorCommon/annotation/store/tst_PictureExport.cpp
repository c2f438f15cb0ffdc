// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// BurnIn and PictureExport: images with their annotations painted over them.
#include <Vantor/annotation/Annotations.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/BurnIn.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QClipboard>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <utility>

using namespace Vantor::Geometry;
using Vantor::Algorithms::CImage;

namespace
{
constexpr int kWidth = 320;
constexpr int kHeight = 240;

/// A view of exactly the size of its image, and one shape of each kind.
class CPicture : public EditFixture
{
public:
    explicit CPicture(int nChannels = 3) : EditFixture(kWidth, kHeight)
    {
        const auto pImage = MakeTestImage(kWidth, kHeight, nChannels);
        for (int y = 0; y < kHeight; ++y) // smooth, as photos are
            for (int x = 0; x < kWidth; ++x)
                for (int k = 0; k < nChannels; ++k)
                    pImage->GetPixel(x, y)[k] =
                        static_cast<unsigned char>(k == 3 ? 255 : (x + y * k) / 4 + 60);
        images.SetImages({pImage});
        view->resize(kWidth, kHeight);
        view->ZoomFit();
        const auto pBox = AddRectangle(20.5, 30, 100, 60);
        pBox->SetPen(QPen(QColor(0, 0, 255), 3));
        pBox->SetBrushFilled(QColor(255, 200, 0, 90));
        Add(std::make_shared<CEllipse>(150, 20, 80, 50));
        Add(std::make_shared<CRectangle>(-10, 190, 60, 80)); // its label and half of it outside
        const auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
        pRuler->SetData(std::make_shared<CLine>(CPoint<double>(40, 120), CPoint<double>(200, 170)));
        geometry.AddObject(pRuler);
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetText(QStringLiteral("burnt"));
        pText->SetPosition({200, 100});
        geometry.AddObject(pText);
        AddRectangle(1, 1, 9, 9)->SetVisible(false);
        geometry.UnSelectedAll();
    }
    CImage& Image() const { return *ctrl->GetCurrentImgage(); }
    QImage Burnt(bool bOwn = false) const { return BurnIn::Paint(Image(), geometry.GetObjects(), bOwn); }
    QImage Shown() const { return view->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    void SetOwnColors(bool bOwn)
    {
        SCenterOptions sOptions;
        sOptions.bOwnColors = bOwn;
        ctrl->SetOptions(sOptions);
    }
};

QImage Plain(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_RGB32);
}

/// The greatest and the mean difference of two pictures of one size in any channel.
std::pair<int, double> Difference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return {999, 999.0};
    int nMost = 0;
    double dblSum = 0.0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            for (int n : {qRed(p) - qRed(q), qGreen(p) - qGreen(q), qBlue(p) - qBlue(q)}) {
                nMost = std::max(nMost, std::abs(n));
                dblSum += std::abs(n);
            }
        }
    return {nMost, dblSum / (3.0 * a.width() * a.height())};
}

/// What a file holds, but for the time at which a document was made, and what follows from it.
QByteArray BytesOf(const QString& strPath)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString strBytes = QString::fromLatin1(file.readAll());
    static const QRegularExpression s_times(QStringLiteral(
        "/CreationDate \\(D:[^)]*\\)|<xmp:[A-Za-z]*Date>[^<]*<|uuid:[-0-9a-f]*|/ID \\[[^]]*\\]"));
    return QString(strBytes).remove(s_times).toLatin1();
}
} // namespace

class tst_PictureExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePictureIsThatOfAViewOfItsSize_data()
    {
        QTest::addColumn<int>("channels");
        QTest::addColumn<bool>("own");
        QTest::newRow("grey") << 1 << false;
        QTest::newRow("RGB") << 3 << false;
        QTest::newRow("RGB in own colours") << 3 << true;
    }
    void thePictureIsThatOfAViewOfItsSize()
    {
        QFETCH(int, channels);
        QFETCH(bool, own);
        CPicture f(channels);
        f.SetOwnColors(own);
        QCOMPARE(f.view->GetViewPort(), QRect(0, 0, kWidth, kHeight));
        const QImage shown = f.Shown();
        QVERIFY(Difference(f.Burnt(own), BurnIn::Paint(f.Image(), {}, own)).first > 100);
        if (const QString strFolder = qEnvironmentVariable("VANTOR_PICTURES"); !strFolder.isEmpty()) {
            shown.save(strFolder + QStringLiteral("/shown.png"));
            f.Burnt(own).save(strFolder + QStringLiteral("/burnt.png"));
        }
        QCOMPARE(f.Burnt(own), shown);
    }

    void whatIsSelectedIsBurntInAsTheRestAndStaysSelected()
    {
        CPicture f;
        const QImage before = f.Burnt();
        for (const auto& pObject : f.geometry.GetObjects())
            pObject->SetSelected(true);
        QSignalSpy spy(&f.geometry, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty);
        QCOMPARE(f.Burnt(), before);
        QVERIFY(spy.isEmpty());
        QCOMPARE(static_cast<int>(f.Selected().size()), f.geometry.Size());
    }

    void transparentPixelsStayTransparent()
    {
        CPicture f(4);
        f.geometry.ClearObject();
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                f.Image().GetPixel(x, y)[3] = x < 100 ? 0 : 255;
        f.AddRectangle(50, 50, 100, 60);
        const auto pImage = BurnIn::ToImage(f.Image(), f.geometry.GetObjects(), false);
        QVERIFY(pImage);
        QCOMPARE(pImage->GetChannel(), 4);
        QCOMPARE(int(pImage->GetPixel(10, 10)[3]), 0);
        QCOMPARE(int(pImage->GetPixel(200, 10)[3]), 255);
        QCOMPARE(int(pImage->GetPixel(80, 50)[3]), 255); // the outline
    }

    void anEmptyImageGivesNothing()
    {
        const CImage image;
        QVERIFY(BurnIn::Paint(image, {}, false).isNull());
        QVERIFY(!BurnIn::ToImage(image, {}, false));
        QVERIFY(BurnIn::ToPdf(image, {}, false).isEmpty());
    }

    void filesOfImagesHoldTheSamePicture_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<double>("difference");
        QTest::newRow("PNG") << QStringLiteral("png") << 0.0;
        QTest::newRow("TIFF") << QStringLiteral("tif") << 0.0;
        QTest::newRow("JPEG") << QStringLiteral("JPG") << 3.0; // at sharp edges
    }
    void filesOfImagesHoldTheSamePicture()
    {
        QFETCH(QString, suffix);
        QFETCH(double, difference);
        CPicture f;
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.") + suffix);
        QCOMPARE(PictureExport::Save(*f.ctrl, strPath, true), QString());
        CImage image;
        QCOMPARE(image.Load(strPath.toStdWString()), 0);
        QCOMPARE(image.GetChannel(), 3);
        const double dblMean = Difference(Plain(BurnIn::Paint(image, {}, true)), f.Burnt(true)).second;
        QVERIFY2(dblMean <= difference, qPrintable(QString::number(dblMean)));
    }

    void aPictureThatIsWrittenBesideTheWindowIsTheSame_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* pSuffix : {"png", "jpg", "tif", "pdf", "svg"})
            QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
    }
    void aPictureThatIsWrittenBesideTheWindowIsTheSame()
    {
        QFETCH(QString, suffix);
        CPicture f;
        const QTemporaryDir folder;
        const QString strWaited = folder.filePath(QStringLiteral("a.") + suffix);
        const QString strBeside = folder.filePath(QStringLiteral("b.") + suffix);
        QCOMPARE(PictureExport::Save(*f.ctrl, strWaited, true), QString());
        QStringList lstTold;
        PictureExport::Start(*f.ctrl, strBeside, true,
                             [&](const QString& strFailure) { lstTold << strFailure; });
        QVERIFY(!QFile::exists(strBeside));
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), QStringLiteral("Export b.") + suffix);
        f.images.SetImages({}); // it goes on with what it was asked for
        CJobs::Get().Finish(f.ctrl.get());
        QCOMPARE(lstTold, QStringList{QString()});
        QCOMPARE(BytesOf(strBeside), BytesOf(strWaited));
    }

    void aPictureThatCannotBeWrittenBesideTheWindowIsTold()
    {
        CPicture f;
        QStringList lstTold;
        const auto told = [&](const QString& strFailure) { lstTold << strFailure; };
        PictureExport::Start(*f.ctrl, QStringLiteral("/nowhere/a.png"), true, told);
        CJobs::Get().Finish(f.ctrl.get());
        QCOMPARE(lstTold, QStringList{QStringLiteral("The file or its folder cannot be written.")});
        f.images.SetImages({});
        PictureExport::Start(*f.ctrl, QStringLiteral("/nowhere/a.png"), true, told);
        QCOMPARE(lstTold.value(1), QStringLiteral("There is no image."));
    }

    void aCancelledExportWritesAndTellsNothing()
    {
        CPicture f;
        const QTemporaryDir folder;
        for (const char* pSuffix : {"png", "pdf", "svg"}) {
            const QString strPath = folder.filePath(QStringLiteral("a.") + QLatin1String(pSuffix));
            PictureExport::Start(*f.ctrl, strPath, true, [](const QString&) { QFAIL("told"); });
            for (const auto& pJob : CJobs::Get().GetJobs())
                CJobs::Get().Cancel(pJob);
            CJobs::Get().Finish(f.ctrl.get());
            QVERIFY(!QFile::exists(strPath));
        }
    }

    void aPdfHasOnePageOfThePicture()
    {
        CPicture f;
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.pdf"));
        QCOMPARE(PictureExport::Save(*f.ctrl, strPath, true), QString());
        const auto vctPages = f.ctrl->LoadPDF(strPath); // at 144 dots per inch
        QCOMPARE(static_cast<int>(vctPages.size()), 1);
        const int nDpi = f.view->logicalDpiX();
        QVERIFY(std::abs(vctPages[0]->GetWidth() - kWidth * 144.0 / nDpi) <= 2.0);
        QVERIFY(std::abs(vctPages[0]->GetHeight() - kHeight * 144.0 / nDpi) <= 2.0);
        const QImage page = BurnIn::Paint(*vctPages[0], {}, false)
                                .scaled(kWidth, kHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (const QString strFolder = qEnvironmentVariable("VANTOR_PICTURES"); !strFolder.isEmpty())
            page.save(strFolder + QStringLiteral("/page.png"));
        const double dblMean = Difference(Plain(page), f.Burnt(true)).second;
        const double dblPlain = Difference(Plain(page), BurnIn::Paint(f.Image(), {}, true)).second;
        QVERIFY2(dblMean < 5.0 && dblPlain > dblMean + 5.0,
                 qPrintable(QStringLiteral("%1 %2").arg(dblMean).arg(dblPlain)));
    }

    void svgIsOfferedWhereFilesOfAnnotationsHaveIt()
    {
        CPicture f;
        bool bHas = false;
        for (const auto& format : Vantor::Annotations::GetFormats())
            bHas = bHas || (format.name == "SVG" && format.writes);
        QStringList lstNames;
        for (const auto& format : PictureExport::GetFormats())
            lstNames << format.strName;
        const QStringList lstAlways{QStringLiteral("PNG"), QStringLiteral("JPEG"), QStringLiteral("TIFF"),
                                    QStringLiteral("PDF")};
        QCOMPARE(lstNames, bHas ? lstAlways + QStringList{QStringLiteral("SVG")} : lstAlways);
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.svg"));
        QCOMPARE(PictureExport::Save(*f.ctrl, strPath, true).isEmpty(), bHas);
        QFile file(strPath);
        QCOMPARE(file.open(QIODevice::ReadOnly) && file.readAll().contains("<svg"), bHas);
    }

    void aFailureHasAReasonAndKeepsTheOldFile()
    {
        CPicture f;
        const QTemporaryDir folder;
        for (const char* szName : {"none/a.png", "none/a.pdf", "a.xyz"})
            QVERIFY2(!PictureExport::Save(*f.ctrl, folder.filePath(QLatin1String(szName)), false).isEmpty(),
                     szName);
        f.images.SetImages({});
        QCOMPARE(PictureExport::Save(*f.ctrl, folder.filePath(QStringLiteral("a.png")), false),
                 QStringLiteral("There is no image."));
        QVERIFY(!PictureExport::Copy(*f.ctrl, false));
    }

    void theClipboardGetsThePicture()
    {
        CPicture f;
        QVERIFY(PictureExport::Copy(*f.ctrl, true));
        QCOMPARE(Plain(QGuiApplication::clipboard()->image()), f.Burnt(true));
    }
};

VANTOR_TEST_MAIN(tst_PictureExport)
#include "tst_PictureExport.moc"
