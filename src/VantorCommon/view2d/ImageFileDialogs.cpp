// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <vector>

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

namespace
{
/// A row of the filters for saving: "PNG (*.png *.PNG)".
struct SFormat {
    const char* pName;
    QStringList lstSuffixes; ///< the first one is the default
};

const std::vector<SFormat>& Formats()
{
    static const std::vector<SFormat> vctFormats{{"PNG", {QStringLiteral("png")}},
                                                 {"JPEG", {QStringLiteral("jpg"), QStringLiteral("jpeg")}},
                                                 {"TIFF", {QStringLiteral("tif"), QStringLiteral("tiff")}},
                                                 {"BMP", {QStringLiteral("bmp")}},
                                                 {"GIF", {QStringLiteral("gif")}}};
    return vctFormats;
}

QString FilterOf(const SFormat& format)
{
    QStringList lstPatterns;
    for (const QString& strSuffix : format.lstSuffixes)
        lstPatterns << QStringLiteral("*.%1 *.%2").arg(strSuffix, strSuffix.toUpper());
    return QStringLiteral("%1 (%2)").arg(QLatin1String(format.pName), lstPatterns.join(QLatin1Char(' ')));
}

/// The format that a name says by its suffix; PNG, which loses nothing, for others.
const SFormat& FormatOf(const QString& strName)
{
    const QString strSuffix = QFileInfo(strName).suffix().toLower();
    for (const SFormat& format : Formats())
        if (format.lstSuffixes.contains(strSuffix))
            return format;
    return Formats().front();
}

QString FilterForAll()
{
    return QStringLiteral("Files (%1)").arg(ImagePatterns());
}

} // namespace

QString ImageFileDialogs::ChooseImageToSave(QWidget* pParent)
{
    const QPointer<QFileDialog> pDialog =
        new QFileDialog(pParent, QStringLiteral("Save Image"), QString(), FilterForAll());
    pDialog->setDefaultSuffix(QStringLiteral("bmp"));
    return Run(pDialog);
}

QString ImageFileDialogs::ChooseImageToSave(QWidget* pParent, const QString& strFolder,
                                            const QString& strName)
{
    const QPointer<QFileDialog> pDialog = new QFileDialog(pParent, QStringLiteral("Save Image"), strFolder);
    QStringList lstFilters;
    for (const SFormat& format : Formats())
        lstFilters << FilterOf(format);
    pDialog->setNameFilters(lstFilters << FilterForAll());
    const auto useFormat = [pDialog](const SFormat& format) {
        pDialog->setDefaultSuffix(format.lstSuffixes.constFirst());
    };
    const SFormat& first = FormatOf(strName);
    pDialog->selectNameFilter(FilterOf(first));
    useFormat(first);
    // A page of "report.pdf" is no document: "report.png".
    const QFileInfo name(strName);
    const bool bHasFormat = first.lstSuffixes.contains(name.suffix().toLower());
    if (!strName.isEmpty())
        pDialog->selectFile(bHasFormat ? strName : name.completeBaseName());
    QObject::connect(pDialog.data(), &QFileDialog::filterSelected, pDialog.data(),
                     [=](const QString& strFilter) {
                         for (const SFormat& format : Formats())
                             if (FilterOf(format) == strFilter)
                                 useFormat(format);
                     });
    return Run(pDialog);
}
