// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QFileDialog>

namespace
{
QString ImagePatterns()
{
    return QStringLiteral(
        "*.bmp *.BMP *.jpg *.JPG *.jpeg *.JPEG *.png *.PNG *.gif *.GIF *.tif *.TIF *.tiff *.TIFF");
}

QString AllFiles()
{
    return QStringLiteral(";;All files (*.*)");
}
} // namespace

QString ImageFileDialogs::FilesFilter()
{
    return QStringLiteral("Files (%1 *.pdf *.PDF)").arg(ImagePatterns()) + AllFiles();
}

QString ImageFileDialogs::ImagesFilter()
{
    return QStringLiteral("Images (%1)").arg(ImagePatterns()) + AllFiles();
}

QString ImageFileDialogs::PdfFilter()
{
    return QStringLiteral("PDF (*.pdf *.PDF)") + AllFiles();
}

QString ImageFileDialogs::ChooseFile(QWidget* pParent, const QString& strTitle, const QString& strFilter)
{
    return QFileDialog::getOpenFileName(pParent, strTitle, QString(), strFilter);
}

QStringList ImageFileDialogs::ChooseFiles(QWidget* pParent, const QString& strTitle, const QString& strFilter)
{
    return QFileDialog::getOpenFileNames(pParent, strTitle, QString(), strFilter);
}

QString ImageFileDialogs::ChooseImageToSave(QWidget* pParent)
{
    QFileDialog dialog(pParent, QStringLiteral("Save Image"), QString(),
                       QStringLiteral("Files (%1)").arg(ImagePatterns()));
    dialog.setDefaultSuffix(QStringLiteral("bmp"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}
