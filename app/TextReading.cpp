// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "TextReading.h"

#include "HostSettings.h"
#include "Preferences.h"

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPushButton>
#include <QSaveFile>

namespace
{
const auto kIsSetUp = "VantorTextReading";
}

QStringList TextReading::Languages()
{
    const QString strEnglish = QStringLiteral("eng");
    const QDir folder(CImage2DProcessOCRModel().GetLanguagePath());
    QStringList lstOthers;
    for (const QString& strFile : folder.entryList({QStringLiteral("*.traineddata")}, QDir::Files))
        lstOthers.append(QFileInfo(strFile).completeBaseName());
    const bool bEnglish = lstOthers.removeAll(strEnglish) > 0;
    lstOthers.removeAll(QStringLiteral("osd")); // finds out how a page lies, reads nothing
    if (!bEnglish)
        return lstOthers;
    QStringList lstLanguages = QStringList{strEnglish} + lstOthers;
    for (const QString& strOther : lstOthers)
        lstLanguages.append(strEnglish + QLatin1Char('+') + strOther);
    return lstLanguages;
}

bool TextReading::Save(const QString& strText, const QString& strPath)
{
    const QByteArray bytes = strText.toUtf8() + '\n';
    QSaveFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

void TextReading::SetUp(CImage2DProcessOCRDlg& dialog, const std::function<void(const QString&)>& tell)
{
    if (dialog.property(kIsSetUp).toBool())
        return;
    dialog.setProperty(kIsSetUp, true);
    const QString strLanguage = Preferences::Text(HostSettings::kOcrLanguage);
    QStringList lstLanguages = Languages();
    if (!lstLanguages.contains(strLanguage))
        lstLanguages.append(strLanguage);
    dialog.SetLanguages(lstLanguages);
    dialog.SetLanguage(strLanguage);
    QObject::connect(dialog.AddButton(tr("&Copy All")), &QPushButton::clicked, &dialog,
                     [&dialog] { QGuiApplication::clipboard()->setText(dialog.GetResultText()); });
    QObject::connect(dialog.AddButton(tr("&Save Text...")), &QPushButton::clicked, &dialog, [&dialog, tell] {
        const QString strPath = QFileDialog::getSaveFileName(&dialog, tr("Save Text"), QString(),
                                                             tr("Text (*.txt);;All files (*)"));
        if (!strPath.isEmpty() && !Save(dialog.GetResultText(), strPath))
            tell(tr("The text cannot be written to %1.").arg(QDir::toNativeSeparators(strPath)));
    });
}
