// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <QStringList>
#include <functional>

class CImageView2DCtrl;

/// The current image of a 2D view with its annotations, for programs that know no annotations. GUI thread
/// only.
namespace PictureExport
{
/// A format of pictures.
struct SFormat {
    QString strName;         ///< as people write it, such as "PNG"
    QStringList lstSuffixes; ///< of file names: lower case, without a dot, the usual one first
};

/// PNG, JPEG, TIFF, PDF and, where files of annotations have it, SVG.
VANTORCOMMON_EXPORT QList<SFormat> GetFormats();
/// Writes the picture, see BurnIn, in the format that the suffix tells, in one step: after a failure a file
/// that stood there is whole. SVG keeps the annotations as shapes over the image.
/// @param ctrl        its current image and annotations
/// @param strPath     of the file
/// @param bOwnColors  see SCenterOptions::bOwnColors
/// @return why it failed, one sentence in English; empty for a success
VANTORCOMMON_EXPORT QString Save(const CImageView2DCtrl& ctrl, const QString& strPath, bool bOwnColors);
/// The same in jobs beside the GUI thread, which paints only the annotations; see CJobs. Closing the program
/// waits for what is being written, and gives up what is not yet painted.
/// @param ctrl        as for Save; whoever waits for the jobs names it to CJobs::Finish
/// @param strPath     of the file
/// @param bOwnColors  see SCenterOptions::bOwnColors
/// @param finished  told the same on the GUI thread; not when it was cancelled or the controller has gone
VANTORCOMMON_EXPORT void Start(CImageView2DCtrl& ctrl, const QString& strPath, bool bOwnColors,
                               std::function<void(const QString& strFailure)> finished);
/// Puts the picture on the clipboard. @return false, and nothing done, without an image or memory
VANTORCOMMON_EXPORT bool Copy(const CImageView2DCtrl& ctrl, bool bOwnColors);
} // namespace PictureExport
