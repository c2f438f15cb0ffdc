// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFacts.h"

#include <Vantor/image/CImage.h>
#include <Vantor/image/SImageMetadata.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMimeDatabase>
#include <climits>

namespace
{
constexpr double kMillimetresPerInch = 25.4;
constexpr double kCentimetresPerInch = 2.54;

QString OneDigit(double dblValue)
{
    return QLocale().toString(dblValue, 'f', 1);
}
} // namespace

QList<SFact> ImageFacts::OfFile(const QString& strPath)
{
    const QFileInfo file(strPath);
    QList<SFact> lstFacts{{tr("Name"), file.fileName()},
                          {tr("Folder"), QDir::toNativeSeparators(file.absolutePath())}};
    if (!file.isFile())
        return lstFacts;
    const QLocale locale;
    lstFacts.append(
        {tr("File size"), tr("%1 (%n byte(s))", nullptr, static_cast<int>(qMin<qint64>(file.size(), INT_MAX)))
                              .arg(locale.formattedDataSize(file.size()))});
    lstFacts.append({tr("Changed"), locale.toString(file.lastModified(), QLocale::LongFormat)});
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchContent);
    lstFacts.append({tr("Format"), type.comment()});
    return lstFacts;
}

QList<SFact> ImageFacts::OfImage(const Vantor::Algorithms::CImage& image)
{
    QList<SFact> lstFacts{
        {tr("Size"), tr("%1 x %2 pixels").arg(image.GetWidth()).arg(image.GetHeight())},
        {tr("Channels"), tr("%n of %1 bits", nullptr, image.GetChannel()).arg(image.GetBitDepth())}};
    const double dblDpi = DotsPerInch(image);
    if (dblDpi > 0.0) {
        const auto millimetres = [=](int nPixels) {
            return OneDigit(nPixels / dblDpi * kMillimetresPerInch);
        };
        lstFacts.append(
            {tr("Page size"),
             tr("%1 x %2 mm").arg(millimetres(image.GetWidth()), millimetres(image.GetHeight()))});
        lstFacts.append({tr("Resolution"), tr("%1 dots per inch").arg(OneDigit(dblDpi))});
    }
    const auto pMetadata = image.GetMetadata();
    if (!pMetadata->profile.empty())
        lstFacts.append({tr("Color profile"), tr("In the file, not applied")});
    for (const auto& text : pMetadata->texts)
        lstFacts.append({QString::fromStdString(text.key), QString::fromStdString(text.text).simplified()});
    return lstFacts;
}

double ImageFacts::DotsPerInch(const Vantor::Algorithms::CImage& image)
{
    using Vantor::Algorithms::EResolutionUnit;
    const auto pMetadata = image.GetMetadata();
    if (image.GetPageResolution() > 0.0 || pMetadata->resolutionUnit == EResolutionUnit::None)
        return image.GetPageResolution();
    const bool bInch = pMetadata->resolutionUnit == EResolutionUnit::Inch;
    return pMetadata->resolutionX * (bInch ? 1.0 : kCentimetresPerInch);
}
