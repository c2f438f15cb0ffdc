// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QByteArray>

class CImageView2DCtrlFiles;

/// Copies the current image of a 2D controller to the clipboard, with SCenterOptions::bEditKeys also the
/// selected annotations, and pastes from it.
class CImageView2DCtrlClipboard
{
public:
    CImageView2DCtrlClipboard(const SImageView2DCtrlContext& context, CImageView2DCtrlFiles& files)
        : m_context(context), m_files(files)
    {
    }

    /// Does nothing without an image.
    void Copy() const;
    /// Adds annotations, or appends the image files of a list of URLs, or a picture.
    void Paste();

private:
    QByteArray SelectedAnnotations() const;
    void PasteAnnotations(const QByteArray& bytes);

    const SImageView2DCtrlContext& m_context;
    CImageView2DCtrlFiles& m_files;
};
