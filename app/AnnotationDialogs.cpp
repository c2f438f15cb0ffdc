// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "AnnotationDialogs.h"

#include "LibraryTexts.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <algorithm>

using Vantor::Annotations::SFormatInfo;
using Vantor::Annotations::SRemark;

namespace
{
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(AnnotationDialogs)
};

constexpr int kMaxListed = 10; // remarks; the details list all

QString PatternOf(const SFormatInfo& format)
{
    return QStringLiteral("*.") + QString::fromStdString(format.suffix);
}

QString FilterOf(const SFormatInfo& format)
{
    return QStringLiteral("%1 (%2)").arg(QString::fromStdString(format.name), PatternOf(format));
}

QString AllFiles()
{
    return Texts::tr("All files") + QStringLiteral(" (*)");
}

std::vector<SFormatInfo> FormatsThat(bool SFormatInfo::*pCan)
{
    std::vector<SFormatInfo> vctFormats;
    for (const SFormatInfo& format : Vantor::Annotations::GetFormats())
        if (format.*pCan)
            vctFormats.push_back(format);
    return vctFormats;
}

QString ChooseExisting(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                       const QStringList& lstFilters)
{
    QFileDialog dialog(pParent, strTitle, strFolder);
    dialog.setNameFilters(lstFilters);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setSupportedSchemes({QStringLiteral("file")});
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

/// Asks for a name; completes it with the suffix of the chosen filter's format before asking whether to
/// replace a file.
AnnotationDialogs::STarget Choose(QWidget* pParent, const QString& strTitle, const QString& strProposal,
                                  const std::vector<SFormatInfo>& vctFormats)
{
    QStringList lstFilters;
    for (const SFormatInfo& format : vctFormats)
        lstFilters.append(FilterOf(format));
    QFileDialog dialog(pParent, strTitle, QFileInfo(strProposal).path());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(lstFilters);
    dialog.setSupportedSchemes({QStringLiteral("file")});
    const auto chosen = [&]() -> const SFormatInfo& {
        return vctFormats[static_cast<std::size_t>(
            std::max(0, lstFilters.indexOf(dialog.selectedNameFilter())))];
    };
    const auto useSuffix = [&] { dialog.setDefaultSuffix(QString::fromStdString(chosen().suffix)); };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, useSuffix);
    useSuffix();
    dialog.selectFile(QFileInfo(strProposal).fileName());
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return {dialog.selectedFiles().value(0), QString::fromStdString(chosen().name)};
}
} // namespace

QString AnnotationDialogs::ChooseToOpen(QWidget* pParent, const QString& strFolder)
{
    return ChooseExisting(pParent, Texts::tr("Open Annotations"), strFolder,
                          {FilterOf(Vantor::Annotations::GetFormats().front()), AllFiles()});
}

QString AnnotationDialogs::ChooseToImport(QWidget* pParent, const QString& strFolder)
{
    QStringList lstPatterns;
    QStringList lstFilters;
    for (const SFormatInfo& format : FormatsThat(&SFormatInfo::reads)) {
        lstPatterns.append(PatternOf(format));
        lstFilters.append(FilterOf(format));
    }
    lstPatterns.removeDuplicates();
    lstFilters.prepend(
        QStringLiteral("%1 (%2)").arg(Texts::tr("Annotations"), lstPatterns.join(QLatin1Char(' '))));
    return ChooseExisting(pParent, Texts::tr("Import Annotations"), strFolder, lstFilters << AllFiles());
}

AnnotationDialogs::STarget AnnotationDialogs::ChooseToSave(QWidget* pParent, const QString& strProposal)
{
    return Choose(pParent, Texts::tr("Save Annotations As"), strProposal,
                  {Vantor::Annotations::GetFormats().front()});
}

AnnotationDialogs::STarget AnnotationDialogs::ChooseToExport(QWidget* pParent, const QString& strProposal)
{
    return Choose(pParent, Texts::tr("Export Annotations"), strProposal, FormatsThat(&SFormatInfo::writes));
}

AnnotationDialogs::EChanged AnnotationDialogs::AskChanged(QWidget* pParent, const QString& strPath)
{
    QMessageBox box(QMessageBox::Warning, Texts::tr("Save Annotations"),
                    Texts::tr("The annotations in %1 were changed by another window or program.")
                        .arg(QFileInfo(strPath).fileName()),
                    QMessageBox::NoButton, pParent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(Texts::tr("Overwriting the file loses those changes."));
    const QPushButton* pOverwrite = box.addButton(Texts::tr("&Overwrite"), QMessageBox::DestructiveRole);
    const QPushButton* pSaveAs = box.addButton(Texts::tr("Save &As..."), QMessageBox::AcceptRole);
    QPushButton* pCancel = box.addButton(Texts::tr("&Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(pCancel);
    box.setEscapeButton(pCancel);
    box.exec();
    if (box.clickedButton() == pOverwrite)
        return EChanged_Overwrite;
    return box.clickedButton() == pSaveAs ? EChanged_SaveAs : EChanged_Cancel;
}

EOtherSize AnnotationDialogs::AskSize(QWidget* pParent, const Vantor::Annotations::SPage& page,
                                      const QSize& size)
{
    QMessageBox box(
        QMessageBox::Question, Texts::tr("Annotations"),
        Texts::tr("The annotations were made for an image of %1 x %2 pixels; this one has %3 x %4.")
            .arg(QString::number(page.width), QString::number(page.height), QString::number(size.width()),
                 QString::number(size.height())),
        QMessageBox::NoButton, pParent);
    box.setInformativeText(Texts::tr("Scale fits them to this image, Keep shows them at the same pixels."));
    QPushButton* pScale = box.addButton(Texts::tr("&Scale"), QMessageBox::AcceptRole);
    const QPushButton* pKeep = box.addButton(Texts::tr("&Keep"), QMessageBox::AcceptRole);
    QPushButton* pLeave = box.addButton(Texts::tr("&Do Not Show"), QMessageBox::RejectRole);
    box.setDefaultButton(pScale);
    box.setEscapeButton(pLeave);
    box.exec();
    if (box.clickedButton() == pScale)
        return EOtherSize_Scale;
    return box.clickedButton() == pKeep ? EOtherSize_Keep : EOtherSize_Leave;
}

bool AnnotationDialogs::ConfirmLoss(QWidget* pParent, const QString& strFormat,
                                    const std::vector<SRemark>& vctRemarks)
{
    if (vctRemarks.empty())
        return true;
    QStringList lstTexts;
    for (const SRemark& remark : vctRemarks) {
        const QString strText = LibraryTexts::Sentence(QString::fromStdString(remark.text));
        lstTexts.append(remark.object.empty()
                            ? strText
                            : QStringLiteral("%1: %2").arg(QString::fromStdString(remark.object), strText));
    }
    QMessageBox box(QMessageBox::Warning, Texts::tr("Export Annotations"),
                    Texts::tr("A file in the format %1 will not say everything.").arg(strFormat),
                    QMessageBox::NoButton, pParent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(lstTexts.mid(0, kMaxListed).join(QLatin1Char('\n')));
    if (lstTexts.size() > kMaxListed)
        box.setDetailedText(lstTexts.join(QLatin1Char('\n')));
    const QPushButton* pExport = box.addButton(Texts::tr("&Export"), QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(Texts::tr("&Cancel"), QMessageBox::RejectRole));
    box.exec();
    return box.clickedButton() == pExport;
}
