// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlClipboard_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QUrl>

using Vantor::Algorithms::CImage;

void CImageView2DCtrlClipboard::Copy() const
{
    const auto pImage = m_context.pCtrl->GetCurrentImgage();
    QImage image;
    if (pImage && CUtilManager::ConvertImage(pImage.get(), image, true))
        QGuiApplication::clipboard()->setImage(image);
}

void CImageView2DCtrlClipboard::Paste()
{
    const QMimeData* pData = QGuiApplication::clipboard()->mimeData();
    if (!pData)
        return;
    if (pData->hasUrls()) {
        PasteUrls(pData->urls());
        return;
    }
    // Deliberate: text wins over an image, and is ignored.
    if (pData->hasText() || !pData->hasImage())
        return;
    // Of an image with fewer than 32 bits a pixel the conversion would take a part only.
    const auto image = qvariant_cast<QImage>(pData->imageData()).convertToFormat(QImage::Format_RGBA8888);
    const auto pImage = std::make_shared<CImage>();
    if (CUtilManager::ConvertImage(image, pImage.get()))
        m_context.pCtrl->PushImage(pImage);
}

/// Deliberate: every file is taken for an image, also a PDF document, and what does not load is not logged.
void CImageView2DCtrlClipboard::PasteUrls(const QList<QUrl>& lstUrls)
{
    for (const QUrl& url : lstUrls) {
        const auto pImage = std::make_shared<CImage>();
        const QString strPath = url.toLocalFile();
        if (pImage->Load(strPath.toStdWString()) == 0)
            m_context.pCtrl->PushImage(pImage);
        else
            Q_EMIT m_context.pCtrl->signal_Failed(
                QStringLiteral("Cannot paste %1. ").arg(url.toDisplayString()) +
                QString::fromStdString(pImage->GetFailureReason()));
    }
}
