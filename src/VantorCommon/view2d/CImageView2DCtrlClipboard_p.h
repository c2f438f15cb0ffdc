// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QByteArray>
#include <QList>

class QUrl;

/// Copies the current image of a 2D controller to the clipboard, with SCenterOptions::bEditKeys also the
/// selected annotations, and pastes from it.
class CImageView2DCtrlClipboard
{
public:
    explicit CImageView2DCtrlClipboard(const SImageView2DCtrlContext& context) : m_context(context) {}

    /// Does nothing without an image.
    void Copy() const;
    /// Adds annotations, or appends the image files of a list of URLs, or a picture.
    void Paste();

private:
    QByteArray SelectedAnnotations() const;
    void PasteAnnotations(const QByteArray& bytes);
    void PasteUrls(const QList<QUrl>& lstUrls);

    const SImageView2DCtrlContext& m_context;
};
