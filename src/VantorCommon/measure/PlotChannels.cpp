// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/PlotChannels_p.h>

namespace
{
const QColor kRed(214, 54, 48);
const QColor kGreen(40, 160, 70);
const QColor kBlue(50, 115, 220);
const QColor kAlpha(150, 90, 190);
const auto kColors = QStringLiteral("Colors");

std::vector<PlotChannels::SShown> Single(int nChannels)
{
    using namespace PlotChannels;
    if (nChannels == 1)
        return {{"Grey", QColor(), 0}};
    if (nChannels == 2)
        return {{"Grey", QColor(), 0}, {"Alpha", kAlpha, 1}};
    std::vector<SShown> vctShown{{"Grey", QColor(), kGrey},
                                 {"Weighted grey", QColor(), kWeighted},
                                 {"Red", kRed, 0},
                                 {"Green", kGreen, 1},
                                 {"Blue", kBlue, 2}};
    if (nChannels == 4)
        vctShown.push_back({"Alpha", kAlpha, 3});
    return nChannels == 3 || nChannels == 4 ? vctShown : std::vector<SShown>();
}
} // namespace

QStringList PlotChannels::Choices(int nChannels)
{
    QStringList lstChoices;
    for (const SShown& shown : Single(nChannels))
        lstChoices << QString::fromLatin1(shown.pName);
    if (nChannels >= 3 && !lstChoices.isEmpty())
        lstChoices.insert(2, kColors);
    return lstChoices;
}

std::vector<PlotChannels::SShown> PlotChannels::Shown(const QString& strChoice, int nChannels)
{
    std::vector<SShown> vctShown;
    for (const SShown& shown : Single(nChannels)) {
        const bool bColor = shown.color.isValid() && shown.nChannel < 3 && nChannels >= 3;
        if (strChoice == kColors ? bColor : strChoice == QLatin1String(shown.pName))
            vctShown.push_back(shown);
    }
    return vctShown;
}
