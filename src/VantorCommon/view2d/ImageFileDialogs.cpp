// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QFileDialog>
#include <QPointer>

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
    // The parent may go while the user chooses, and takes the dialog with it.
    const QPointer<QFileDialog> pDialog = new QFileDialog(pParent, QStringLiteral("Save Image"), QString(),
                                                          QStringLiteral("Files (%1)").arg(ImagePatterns()));
    pDialog->setDefaultSuffix(QStringLiteral("bmp"));
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    const bool bAccepted = pDialog->exec() == QDialog::Accepted;
    const QString strFile = pDialog && bAccepted ? pDialog->selectedFiles().value(0) : QString();
    delete pDialog;
    return strFile;
}
