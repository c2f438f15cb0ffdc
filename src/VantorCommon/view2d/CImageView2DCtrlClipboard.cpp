// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlClipboard_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrlFiles_p.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <string>
#include <unordered_set>

using Vantor::Algorithms::CImage;
using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;

namespace
{
const auto kAnnotations = QStringLiteral("application/x-vantor-annotations");
} // namespace

void CImageView2DCtrlClipboard::Copy() const
{
    const auto pImage = m_context.pCtrl->GetCurrentImgage();
    QImage image;
    if (pImage && m_context.sOptions.bBackground && pImage->IsDeferred() && !pImage->HasPixels()) {
        Q_EMIT m_context.pCtrl->signal_Failed(
            QStringLiteral("Cannot copy the image. The page is still being rendered."));
        return;
    }
    if (!pImage || !CUtilManager::ConvertImage(pImage.get(), image, true))
        return;
    auto* pData = new QMimeData;
    pData->setImageData(image);
    if (const QByteArray bytes = SelectedAnnotations(); !bytes.isEmpty())
        pData->setData(kAnnotations, bytes);
    QGuiApplication::clipboard()->setMimeData(pData);
}

/// In the library's own format; empty without a selection or with SCenterOptions::bEditKeys off.
QByteArray CImageView2DCtrlClipboard::SelectedAnnotations() const
{
    if (!m_context.sOptions.bEditKeys)
        return {};
    SDocument document;
    document.pages.emplace_back();
    for (const auto& pObject : m_context.pCtrl->GetAnnotationStore()->GetSelected()) {
        const auto object = AnnotationDocument::WriteObject(*pObject);
        if (!object.kind.empty())
            document.pages[0].objects.push_back(object);
    }
    SContext context;
    std::string bytes;
    if (!document.pages[0].objects.empty())
        Vantor::Annotations::Write(document, Vantor::Annotations::kOwnFormat, context, bytes);
    return QByteArray::fromStdString(bytes);
}

/// At their stored positions, or a little beside their originals.
void CImageView2DCtrlClipboard::PasteAnnotations(const QByteArray& bytes)
{
    SContext context;
    SDocument document;
    const auto report =
        Vantor::Annotations::Read(bytes.toStdString(), Vantor::Annotations::kOwnFormat, context, document);
    if (!report.failure.empty() || document.pages.empty()) {
        Q_EMIT m_context.pCtrl->signal_Failed(QStringLiteral("Cannot paste the annotations. ") +
                                              QString::fromStdString(report.failure));
        return;
    }
    std::unordered_set<std::string> ids;
    for (const auto& pObject : m_context.pGeometryModel->GetObjects())
        ids.insert(pObject->GetId().toStdString());
    const auto& vctObjects = document.pages[0].objects;
    const bool bBeside = std::any_of(vctObjects.begin(), vctObjects.end(),
                                     [&](const auto& object) { return ids.count(object.id) != 0; });
    const double dblOffset = bBeside ? CAnnotationStore::kCopyOffset : 0.0;
    m_context.pCtrl->GetAnnotationStore()->Paste(vctObjects, {dblOffset, dblOffset});
}

void CImageView2DCtrlClipboard::Paste()
{
    const QMimeData* pData = QGuiApplication::clipboard()->mimeData();
    if (!pData)
        return;
    if (m_context.sOptions.bEditKeys && pData->hasFormat(kAnnotations) && m_context.pGeometryModel &&
        m_context.pCtrl->GetCurrentImgage()) {
        PasteAnnotations(pData->data(kAnnotations));
        return;
    }
    if (pData->hasUrls()) {
        const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
        for (const QUrl& url : pData->urls())
            if (pCtrl)
                m_files.Paste(url);
        return;
    }
    // Deliberate: text takes precedence over an image, and is ignored.
    if (pData->hasText() || !pData->hasImage())
        return;
    // ConvertImage would take only a part of an image with fewer than 32 bits a pixel.
    const auto image = qvariant_cast<QImage>(pData->imageData()).convertToFormat(QImage::Format_RGBA8888);
    const auto pImage = std::make_shared<CImage>();
    if (CUtilManager::ConvertImage(image, pImage.get()))
        m_context.pCtrl->PushImage(pImage);
}
