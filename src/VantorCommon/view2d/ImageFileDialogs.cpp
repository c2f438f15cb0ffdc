// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <Vantor/image/file/ImageFormats.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <algorithm>
#include <vector>

using Vantor::Algorithms::SImageFormatInfo;

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

/// Appends the default suffix to a name that Qt has left without one, because it looks for a dot in the whole
/// path. Qt asked whether to replace the file of the typed name, so this asks for the completed one.
/// @return whether the user accepts; false: the user wants another name
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

/// Shows the dialog. The parent may be destroyed while the user chooses, and the dialog with it: that counts
/// as cancelled.
/// @return the chosen files, none when cancelled
QStringList Ask(QFileDialog* pDialog)
{
    return pDialog->exec() == QDialog::Accepted ? pDialog->selectedFiles() : QStringList();
}

/// Asks for existing files.
QStringList AskForFiles(QWidget* pParent, const QString& strTitle, const QString& strFilter,
                        QFileDialog::FileMode eMode)
{
    static bool s_bChosen = false; // Qt remembers where
    const QString strFolder =
        s_bChosen ? QString() : CSettingManager::GetString(CSettingManager::kStartFolder, QString());
    const QPointer<QFileDialog> pDialog = new QFileDialog(pParent, strTitle, strFolder, strFilter);
    pDialog->setFileMode(eMode);
    pDialog->setSupportedSchemes({QStringLiteral("file")});
    QStringList lstFiles = Ask(pDialog);
    s_bChosen = s_bChosen || !lstFiles.isEmpty();
    delete pDialog;
    return lstFiles;
}

/// Runs a dialog for saving and deletes it. @return the file, empty when cancelled
QString Run(const QPointer<QFileDialog>& pDialog)
{
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    QString strFile;
    do
        strFile = Ask(pDialog).value(0);
    while (LacksSuffix(strFile) && !AddSuffix(pDialog, strFile));
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
    return AskForFiles(pParent, strTitle, strFilter, QFileDialog::ExistingFile).value(0);
}

QStringList ImageFileDialogs::ChooseFiles(QWidget* pParent, const QString& strTitle, const QString& strFilter)
{
    return AskForFiles(pParent, strTitle, strFilter, QFileDialog::ExistingFiles);
}

namespace
{
/// A filter for saving: "PNG (*.png *.PNG)".
struct SFilter {
    QString strName;
    QStringList lstSuffixes; ///< the first one is the default
};

/// The formats for saving: PNG, which loses nothing, first, those of few colours last.
std::vector<SFilter> SaveFilters()
{
    std::vector<SImageFormatInfo> formats = Vantor::Algorithms::GetImageFormats();
    const auto rank = [](const SImageFormatInfo& format) {
        return format.name == "PNG" ? 0 : format.fewColors ? 2 : 1;
    };
    std::stable_sort(formats.begin(), formats.end(),
                     [rank](const auto& a, const auto& b) { return rank(a) < rank(b); });
    std::vector<SFilter> vctFilters;
    for (const SImageFormatInfo& format : formats) {
        if (!format.canSave)
            continue;
        QStringList lstSuffixes;
        for (const std::string& strSuffix : format.suffixes)
            lstSuffixes << QString::fromStdString(strSuffix);
        vctFilters.push_back({QString::fromStdString(format.name), lstSuffixes});
    }
    return vctFilters;
}

QString PatternsOf(const SFilter& filter)
{
    QStringList lstPatterns;
    for (const QString& strSuffix : filter.lstSuffixes)
        lstPatterns << QStringLiteral("*.%1 *.%2").arg(strSuffix, strSuffix.toUpper());
    return QStringLiteral("%1 (%2)").arg(filter.strName, lstPatterns.join(QLatin1Char(' ')));
}

/// The filter of the format of a name's suffix; the first one for other suffixes.
SFilter FilterOf(const std::vector<SFilter>& vctFilters, const QString& strName)
{
    const QString strSuffix = QFileInfo(strName).suffix().toLower();
    for (const SFilter& filter : vctFilters)
        if (filter.lstSuffixes.contains(strSuffix))
            return filter;
    return vctFilters.front();
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
    const std::vector<SFilter> vctFilters = SaveFilters();
    QStringList lstPatterns;
    for (const SFilter& filter : vctFilters)
        lstPatterns << PatternsOf(filter);
    pDialog->setNameFilters(lstPatterns << FilterForAll());
    const auto use = [pDialog](const SFilter& filter) {
        pDialog->setDefaultSuffix(filter.lstSuffixes.constFirst());
    };
    const SFilter first = FilterOf(vctFilters, strName);
    pDialog->selectNameFilter(PatternsOf(first));
    use(first);
    // A page of "report.pdf" is no document: "report.png".
    const QFileInfo name(strName);
    const bool bHasFormat = first.lstSuffixes.contains(name.suffix().toLower());
    if (!strName.isEmpty())
        pDialog->selectFile(bHasFormat ? strName : name.completeBaseName());
    QObject::connect(pDialog.data(), &QFileDialog::filterSelected, pDialog.data(),
                     [=](const QString& strFilter) {
                         for (const SFilter& filter : vctFilters)
                             if (PatternsOf(filter) == strFilter)
                                 use(filter);
                     });
    return Run(pDialog);
}
