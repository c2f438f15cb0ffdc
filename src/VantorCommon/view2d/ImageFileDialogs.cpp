// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
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

bool LacksSuffix(const QString& strFile)
{
    return !strFile.isEmpty() && !QFileInfo(strFile).fileName().contains(QLatin1Char('.'));
}

/// Appends the default suffix to a name that Qt has left without one: it looks for a dot in the whole path.
/// Qt has asked about the name that was typed, so the completed one is asked about here.
/// @return whether that is the answer; false: the person wants another name
bool AddSuffix(const QPointer<QFileDialog>& pDialog, QString& strFile)
{
    strFile += QLatin1Char('.') + pDialog->defaultSuffix();
    if (!QFileInfo::exists(strFile))
        return true;
    const QString strQuestion =
        QStringLiteral("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(strFile).fileName());
    const QPointer<QMessageBox> pBox =
        new QMessageBox(QMessageBox::Warning, pDialog->windowTitle(), strQuestion,
                        QMessageBox::Yes | QMessageBox::No, pDialog->parentWidget());
    pBox->setTextFormat(Qt::PlainText);
    pBox->setDefaultButton(QMessageBox::No);
    const bool bReplace = pBox->exec() == QMessageBox::Yes;
    delete pBox;
    if (!pDialog)
        strFile.clear();
    return bReplace || !pDialog;
}

/// Runs a dialog for saving and deletes it. @return the file, empty when cancelled
QString Run(const QPointer<QFileDialog>& pDialog)
{
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    QString strFile;
    do {
        const bool bAccepted = pDialog->exec() == QDialog::Accepted;
        // The parent may have gone while the user chose, and taken the dialog with it.
        strFile = pDialog && bAccepted ? pDialog->selectedFiles().value(0) : QString();
    } while (LacksSuffix(strFile) && !AddSuffix(pDialog, strFile));
    delete pDialog;
    return strFile;
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
    const QPointer<QFileDialog> pDialog = new QFileDialog(pParent, QStringLiteral("Save Image"), QString(),
                                                          QStringLiteral("Files (%1)").arg(ImagePatterns()));
    pDialog->setDefaultSuffix(QStringLiteral("bmp"));
    return Run(pDialog);
}
