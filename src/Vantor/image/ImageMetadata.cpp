// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageMetadata_p.h>

#include <Vantor/image/file/ImageFormats_p.h>

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kOrientations = 8;
constexpr int kFirstThatExchangesSides = 5;
/// Beyond atoms on one side and maps on the other; what no format could write is no resolution.
constexpr double kMostPixelsPerUnit = 1e9;
constexpr double kLeastPixelsPerUnit = 1e-6;

bool IsResolution(double v)
{
    return v >= kLeastPixelsPerUnit && v <= kMostPixelsPerUnit; // false for what is not a number
}

bool IsEmpty(const SImageMetadata& metadata)
{
    return metadata.resolutionX == 0.0 && metadata.orientation == 1 && metadata.profile.empty() &&
           metadata.texts.empty();
}
} // namespace

bool KeepInRange(SImageMetadata& metadata)
{
    const bool bSquare = metadata.resolutionX == metadata.resolutionY;
    if (!IsResolution(metadata.resolutionX) || !IsResolution(metadata.resolutionY) ||
        (metadata.resolutionUnit == EResolutionUnit::None && bSquare)) { // which says nothing
        metadata.resolutionX = metadata.resolutionY = 0.0;
        metadata.resolutionUnit = EResolutionUnit::None;
    }
    if (metadata.orientation < 1 || metadata.orientation > kOrientations)
        metadata.orientation = 1;
    bool bDropped = metadata.profile.size() > kMostProfileBytes;
    if (bDropped)
        metadata.profile.clear();
    auto& texts = metadata.texts;
    const auto end = std::remove_if(texts.begin(), texts.end(), [](const SImageText& text) {
        return std::max(text.key.size(), text.text.size()) > kMostImageTextBytes;
    });
    bDropped = bDropped || end != texts.end() || texts.size() > kMostImageTexts;
    texts.erase(end, texts.end());
    texts.resize(std::min(texts.size(), kMostImageTexts));
    return bDropped;
}

std::shared_ptr<const SImageMetadata> MetadataOf(SFound& found)
{
    SImageMetadata& metadata = found.metadata;
    if (KeepInRange(metadata))
        found.notes.emplace_back("The colour profile or a text of the file is too long and was not kept.");
    if (metadata.orientation >= kFirstThatExchangesSides)
        std::swap(metadata.resolutionX, metadata.resolutionY);
    return IsEmpty(metadata) ? nullptr : std::make_shared<SImageMetadata>(std::move(metadata));
}

std::shared_ptr<const SImageMetadata> Turned(std::shared_ptr<const SImageMetadata> pMetadata, int nQuarters)
{
    if (!pMetadata || pMetadata->resolutionX == pMetadata->resolutionY ||
        (nQuarters >= 0 && nQuarters % 2 == 0))
        return pMetadata;
    auto pTurned = std::make_shared<SImageMetadata>(*pMetadata);
    std::swap(pTurned->resolutionX, pTurned->resolutionY);
    if (nQuarters < 0) {
        pTurned->resolutionX = pTurned->resolutionY = 0.0;
        pTurned->resolutionUnit = EResolutionUnit::None;
    }
    return pTurned;
}

double PerMetre(EResolutionUnit eUnit)
{
    switch (eUnit) {
    case EResolutionUnit::Inch:
        return kInchesPerMetre;
    case EResolutionUnit::Centimetre:
        return kCentimetresPerMetre;
    case EResolutionUnit::None:
        break;
    }
    return 0.0;
}

std::uint32_t ToWhole(double dblValue, std::uint32_t nMost)
{
    const double dblWhole = std::round(dblValue);
    return dblWhole >= 1.0 && dblWhole <= nMost ? static_cast<std::uint32_t>(dblWhole) : 0;
}

void AddText(SImageMetadata& metadata, std::string key, std::string_view text)
{
    if (metadata.texts.size() > kMostImageTexts) // one too many, so that the loss is noticed
        return;
    const int nBytes = static_cast<int>(std::min(text.size(), kMostImageTextBytes + 1));
    QString strText = QString::fromUtf8(text.data(), nBytes);
    if (strText.contains(QChar::ReplacementCharacter))
        strText = QString::fromLatin1(text.data(), nBytes);
    strText.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (QChar& character : strText) {
        if (character.category() == QChar::Other_Control && character != QLatin1Char('\n') &&
            character != QLatin1Char('\t'))
            character = QLatin1Char(' ');
    }
    metadata.texts.push_back({std::move(key), strText.toStdString()});
}

bool IsProfileFor(const std::vector<unsigned char>& profile, int nChannels)
{
    constexpr std::size_t kHeadBytes = 128;
    constexpr std::size_t kColors = 16; // where the head names the kind of colours
    constexpr std::size_t kColorsBytes = 4;
    return profile.size() >= kHeadBytes &&
           std::memcmp(profile.data() + kColors, nChannels == 1 ? "GRAY" : "RGB ", kColorsBytes) == 0;
}

} // namespace Vantor::Algorithms
