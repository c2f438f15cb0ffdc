// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QStringList>

class QWidget;

/// The modal file dialogs of the viewers and of the centre. Caller and parent may be destroyed meanwhile; a
/// dialog that loses its parent ends as if cancelled.
namespace ImageFileDialogs
{
/// "Files (...)" of all image formats and PDF, then all files.
QString FilesFilter();
/// "Images (...)" of all image formats, then all files.
QString ImagesFilter();
/// "PDF (...)", then all files.
QString PdfFilter();

/// One existing file, empty when cancelled.
QString ChooseFile(QWidget* pParent, const QString& strTitle, const QString& strFilter);
/// Any number of existing files.
QStringList ChooseFiles(QWidget* pParent, const QString& strTitle, const QString& strFilter);
/// The file to which to save an image. The title is "Save Image"; a name without a suffix gets "bmp". Empty
/// when cancelled.
QString ChooseImageToSave(QWidget* pParent);
/// The same, starting with a folder (empty: the last one) and a name, with a filter for each format beside
/// the common one. The dialog selects the format of the name, PNG if it has none, and its suffix is the
/// default.
QString ChooseImageToSave(QWidget* pParent, const QString& strFolder, const QString& strName);
} // namespace ImageFileDialogs
