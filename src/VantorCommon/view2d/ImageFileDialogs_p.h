// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QStringList>

class QWidget;

/// The modal file dialogs of the viewers and of the centre. Whoever calls them, or the parent, may be gone
/// when they return; without its parent a dialog ends as if it were cancelled.
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
/// Where to save an image: titled "Save Image", a name without a suffix gets "bmp". Empty when
/// cancelled.
QString ChooseImageToSave(QWidget* pParent);
/// The same, beginning with a folder (empty: the one used last) and a name, and with a filter for each format
/// beside that for all. The format of the name is chosen, PNG where it has none; its suffix is the default.
QString ChooseImageToSave(QWidget* pParent, const QString& strFolder, const QString& strName);
} // namespace ImageFileDialogs
