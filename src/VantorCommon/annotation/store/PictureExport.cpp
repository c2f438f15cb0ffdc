// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/PictureExport.h>

#include <Vantor/annotation/Annotations.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/BurnIn_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QBuffer>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <algorithm>
#include <memory>
#include <utility>

using Vantor::Algorithms::CImage;

namespace
{
constexpr const char* kSvg = "SVG";
const auto kNoMemory = QStringLiteral("There is not enough memory.");
const auto kNoImage = QStringLiteral("There is no image.");
constexpr qint64 kBytesPerPixel = 8; // of the picture in two formats at once

using ImagePtr = std::shared_ptr<CImage>;

bool HasSvg()
{
    const auto formats = Vantor::Annotations::GetFormats();
    return std::any_of(formats.begin(), formats.end(),
                       [](const auto& format) { return format.name == kSvg && format.writes; });
}

BurnIn::ObjectList ObjectsOf(const CImageView2DCtrl& ctrl)
{
    const CImageView2DGeometryModel* pGeometry = ctrl.GetGeometryModel();
    return pGeometry ? pGeometry->GetObjects() : BurnIn::ObjectList();
}

QString WriteBytes(const QString& strPath, const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return kNoMemory;
    QSaveFile file(strPath);
    const bool bWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return bWritten ? QString() : file.errorString() + QLatin1Char('.');
}

/// The way of a picture into a file, stage by stage.
struct SStages {
    std::function<bool()> prepare;  ///< any thread; false without memory
    std::function<bool()> paint;    ///< GUI thread; the same
    std::function<QString()> write; ///< any thread; why it failed
};

QByteArray PngOf(const CImage& image)
{
    QImage picture;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return CUtilManager::ViewImage(&image, picture) && picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

/// Annotations as they are shown: a document has the places on the picture in the file.
SStages SvgStages(const ImagePtr& pImage, const BurnIn::ObjectList& vctObjects, const QString& strPath)
{
    using namespace Vantor::Annotations;
    const auto pDocument = std::make_shared<SDocument>();
    const auto pContext = std::make_shared<SContext>();
    const auto prepare = [=] {
        pContext->imageName = QString::fromStdWString(pImage->GetName()).toStdString();
        pContext->width = pImage->GetWidth();
        pContext->height = pImage->GetHeight();
        pContext->picture = PngOf(*pImage).toStdString();
        pContext->pictureType = "image/png";
        return !pContext->picture.empty();
    };
    const auto paint = [=] {
        SPage page;
        page.width = pImage->GetWidth();
        page.height = pImage->GetHeight();
        pDocument->generator = "Vantor";
        pDocument->pages.push_back(AnnotationDocument::Pack(page, vctObjects));
        return true;
    };
    const auto write = [=] {
        return QString::fromStdString(Save(*pDocument, strPath.toStdString(), kSvg, *pContext).failure);
    };
    return {prepare, paint, write};
}

SStages PdfStages(const ImagePtr& pImage, const BurnIn::ObjectList& vctObjects, const QString& strPath,
                  bool bOwnColors)
{
    const auto pPdf = std::make_shared<BurnIn::CPdf>();
    return {[=] { return pPdf->Begin(*pImage); }, [=] { return pPdf->Paint(vctObjects, bOwnColors); },
            [=] { return WriteBytes(strPath, pPdf->GetBytes()); }};
}

QString SaveImage(const CImage* pBurnt, const QString& strPath)
{
    if (!pBurnt)
        return kNoMemory;
    return pBurnt->Save(strPath.toStdWString()) == 0 ? QString()
                                                     : QString::fromStdString(pBurnt->GetFailureReason());
}

SStages ImageStages(const ImagePtr& pImage, const BurnIn::ObjectList& vctObjects, const QString& strPath,
                    bool bOwnColors)
{
    const auto pPicture = std::make_shared<QImage>();
    const auto prepare = [=] {
        *pPicture = BurnIn::MakeGround(*pImage);
        return !pPicture->isNull();
    };
    const auto paint = [=] {
        BurnIn::PaintOn(*pPicture, vctObjects, bOwnColors);
        return true;
    };
    return {prepare, paint, [=] { return SaveImage(BurnIn::ToImage(std::move(*pPicture)).get(), strPath); }};
}

/// Of the annotations that the image has now.
SStages StagesOf(const CImageView2DCtrl& ctrl, const QString& strPath, bool bOwnColors)
{
    const ImagePtr pImage = ctrl.GetCurrentImgage();
    const BurnIn::ObjectList vctObjects = ObjectsOf(ctrl);
    const QString strSuffix = QFileInfo(strPath).suffix().toLower();
    if (strSuffix == QLatin1String("pdf"))
        return PdfStages(pImage, vctObjects, strPath, bOwnColors);
    if (strSuffix == QLatin1String("svg") && HasSvg())
        return SvgStages(pImage, vctObjects, strPath);
    return ImageStages(pImage, vctObjects, strPath, bOwnColors);
}

SJob JobOf(const QString& strPath)
{
    SJob sJob;
    sJob.strKind = QStringLiteral("export ") + strPath;
    sJob.strTitle = QStringLiteral("Export %1").arg(QFileInfo(strPath).fileName());
    return sJob;
}
} // namespace

QList<PictureExport::SFormat> PictureExport::GetFormats()
{
    QList<SFormat> lstFormats{{QStringLiteral("PNG"), {QStringLiteral("png")}},
                              {QStringLiteral("JPEG"), {QStringLiteral("jpg"), QStringLiteral("jpeg")}},
                              {QStringLiteral("TIFF"), {QStringLiteral("tif"), QStringLiteral("tiff")}},
                              {QStringLiteral("PDF"), {QStringLiteral("pdf")}}};
    if (HasSvg())
        lstFormats.append({QStringLiteral("SVG"), {QStringLiteral("svg")}});
    return lstFormats;
}

QString PictureExport::Save(const CImageView2DCtrl& ctrl, const QString& strPath, bool bOwnColors)
{
    if (!ctrl.GetCurrentImgage())
        return kNoImage;
    const SStages stages = StagesOf(ctrl, strPath, bOwnColors);
    return stages.prepare() && stages.paint() ? stages.write() : kNoMemory;
}

void PictureExport::Start(CImageView2DCtrl& ctrl, const QString& strPath, bool bOwnColors,
                          std::function<void(const QString& strFailure)> finished)
{
    const ImagePtr pImage = ctrl.GetCurrentImgage();
    if (!pImage)
        return finished(kNoImage);
    CImageView2DCtrl* pReceiver = &ctrl;
    const auto pStages = std::make_shared<const SStages>(StagesOf(ctrl, strPath, bOwnColors));
    const auto write = [=] {
        SJob sJob = JobOf(strPath);
        sJob.bMustFinish = true;
        CJobs::Get().Start(pReceiver, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
            return [finished, strFailure = pStages->write()] { finished(strFailure); };
        });
    };
    SJob sJob = JobOf(strPath);
    sJob.nMemory = kBytesPerPixel * pImage->GetWidth() * pImage->GetHeight();
    CJobs::Get().Start(pReceiver, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
        const bool bReady = pStages->prepare();
        return [=] { bReady && pStages->paint() ? write() : finished(kNoMemory); };
    });
}

bool PictureExport::Copy(const CImageView2DCtrl& ctrl, bool bOwnColors)
{
    const auto pImage = ctrl.GetCurrentImgage();
    const QImage picture = pImage ? BurnIn::Paint(*pImage, ObjectsOf(ctrl), bOwnColors) : QImage();
    if (picture.isNull())
        return false;
    QGuiApplication::clipboard()->setImage(picture);
    return true;
}
