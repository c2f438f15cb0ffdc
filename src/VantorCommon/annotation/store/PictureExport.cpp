// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/PictureExport.h>

#include <Vantor/annotation/Annotations.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/view2d/BurnIn.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QBuffer>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <algorithm>

using Vantor::Algorithms::CImage;

namespace
{
constexpr const char* kSvg = "SVG";
const auto kNoMemory = QStringLiteral("There is not enough memory.");

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

QString SaveSvg(const CImageView2DCtrl& ctrl, const CImage& image, const QString& strPath)
{
    QImage picture;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!CUtilManager::ViewImage(&image, picture) || !picture.save(&buffer, "PNG"))
        return kNoMemory;
    Vantor::Annotations::SContext context;
    context.imageName = QString::fromStdWString(image.GetName()).toStdString();
    context.width = image.GetWidth();
    context.height = image.GetHeight();
    context.picture = bytes.toStdString();
    context.pictureType = "image/png";
    // As they are shown: a document has the places on the picture in the file.
    Vantor::Annotations::SPage page;
    page.width = image.GetWidth();
    page.height = image.GetHeight();
    Vantor::Annotations::SDocument document;
    document.generator = "Vantor";
    document.pages.push_back(AnnotationDocument::Pack(page, ObjectsOf(ctrl)));
    return QString::fromStdString(
        Vantor::Annotations::Save(document, strPath.toStdString(), kSvg, context).failure);
}

QString SaveImage(const CImage* pBurnt, const QString& strPath)
{
    if (!pBurnt)
        return kNoMemory;
    return pBurnt->Save(strPath.toStdWString()) == 0 ? QString()
                                                     : QString::fromStdString(pBurnt->GetFailureReason());
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
    const auto pImage = ctrl.GetCurrentImgage();
    if (!pImage)
        return QStringLiteral("There is no image.");
    const QString strSuffix = QFileInfo(strPath).suffix().toLower();
    if (strSuffix == QLatin1String("pdf"))
        return WriteBytes(strPath, BurnIn::ToPdf(*pImage, ObjectsOf(ctrl), bOwnColors));
    if (strSuffix == QLatin1String("svg") && HasSvg())
        return SaveSvg(ctrl, *pImage, strPath);
    return SaveImage(BurnIn::ToImage(*pImage, ObjectsOf(ctrl), bOwnColors).get(), strPath);
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
