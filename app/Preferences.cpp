// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Preferences.h"

#include "HostSettings.h"

#include <Vantor/image/file/JpegQuality.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <VantorCommon/view2d/CPageMemory.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <algorithm>

namespace
{
constexpr int kDefaultDpi = 144;
constexpr int kDefaultQuality = 95;
constexpr int kMinDpi = 18;
constexpr int kMaxDpi = 1200;
constexpr int kMaxMegabytes = 64 << 10;
constexpr int kMegabyte = 20; // its bits

qint64 Bytes(const QString& strKey)
{
    return qint64(Preferences::Number(strKey)) << kMegabyte;
}

Preferences::SRow RowOf(const QString& strKey)
{
    const auto rows = Preferences::Rows();
    const auto it =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.strKey == strKey; });
    return it == rows.end() ? Preferences::SRow{} : *it;
}
} // namespace

std::vector<Preferences::SRow> Preferences::Rows()
{
    const QString strMegabytes = tr(" MB");
    const int nReadAhead = static_cast<int>(CReadAhead::kDefaultLimit >> kMegabyte);
    const int nPages = static_cast<int>(CPageMemory::kDefaultLimit >> kMegabyte);
    const auto number = [](const QString& strKey, const QString& strLabel, int nDefault, int nMinimum,
                           int nMaximum, const QString& strSuffix) {
        return SRow{strKey, strLabel, EKind_Number, nDefault, nMinimum, nMaximum, strSuffix};
    };
    const auto other = [](const QString& strKey, const QString& strLabel, EKind eKind,
                          const QVariant& varDefault) {
        return SRow{strKey, strLabel, eKind, varDefault, 0, 0, QString()};
    };
    return {
        number(CSettingManager::kLoaderResolutionY, tr("&Resolution of documents:"), kDefaultDpi, kMinDpi,
               kMaxDpi, tr(" dots per inch")),
        number(HostSettings::kPageMemory, tr("&Memory for pages of documents:"), nPages, 0, kMaxMegabytes,
               strMegabytes),
        number(HostSettings::kReadAheadMemory, tr("Memory for &images read ahead:"), nReadAhead, 0,
               kMaxMegabytes, strMegabytes),
        number(HostSettings::kJpegQuality, tr("&Quality of JPEG files:"), kDefaultQuality, 1, 100, QString()),
        other(CSettingManager::kStartFolder, tr("&Folder where dialogs start:"), EKind_Folder, QString()),
        other(HostSettings::kOcrLanguage, tr("&Language of texts to read:"), EKind_Text,
              QStringLiteral("eng")),
        other(HostSettings::kBackground, tr("Long work runs &beside the window"), EKind_Switch, 1),
        other(HostSettings::kCheckerboard, tr("Transparent images on a &checkerboard"), EKind_Switch, 1),
        other(HostSettings::kAskUnsaved, tr("&Ask before unsaved work is lost"), EKind_Switch, 1),
        other(HostSettings::kAutoSave, tr("&Save annotations by themselves"), EKind_Switch, 0),
    };
}

int Preferences::Number(const QString& strKey)
{
    const SRow row = RowOf(strKey);
    const int nNumber = CSettingManager::GetInt(strKey, row.varDefault.toInt());
    return row.eKind == EKind_Number ? std::clamp(nNumber, row.nMinimum, row.nMaximum) : nNumber;
}

QString Preferences::Text(const QString& strKey)
{
    return CSettingManager::GetString(strKey, RowOf(strKey).varDefault.toString());
}

void Preferences::Set(const QString& strKey, const QVariant& value)
{
    // The loader of documents reads both.
    if (strKey == CSettingManager::kLoaderResolutionY)
        CSettingManager::Set(CSettingManager::kLoaderResolutionX, value);
    CSettingManager::Set(strKey, value);
}

void Preferences::Apply(SCenterOptions& sOptions)
{
    sOptions.bBackground = IsOn(HostSettings::kBackground);
    sOptions.bCheckerboard = IsOn(HostSettings::kCheckerboard);
    CReadAhead::Get().SetLimit(Bytes(HostSettings::kReadAheadMemory));
    CPageMemory::Get().SetLimit(Bytes(HostSettings::kPageMemory));
    Vantor::Algorithms::SetJpegQuality(Number(HostSettings::kJpegQuality));
}
