// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/ImageFormats.h>

#include <Vantor/image/file/ImageFormats_p.h>

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

namespace Vantor::Algorithms
{

namespace
{
/// "a, b or c".
std::string Join(const std::vector<std::string_view>& words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0)
            text += i + 1 < words.size() ? ", " : " or ";
        text += words[i];
    }
    return text;
}

std::size_t LongestHead()
{
    std::size_t nLongest = 0;
    for (const SImageFormat& format : ImageFormats()) {
        for (const std::string_view head : format.heads)
            nLongest = std::max(nLongest, head.size());
    }
    return nLongest;
}
} // namespace

const SImageFormat* FormatOfContent(QIODevice& device)
{
    static const auto nLongest = static_cast<qint64>(LongestHead());
    const QByteArray bytes = device.peek(nLongest);
    const std::string_view begin(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    for (const SImageFormat& format : ImageFormats()) {
        for (const std::string_view head : format.heads) {
            if (BeginsLike(begin, head))
                return &format;
        }
    }
    return nullptr;
}

const SImageFormat* FormatToSave(const std::string& strPath)
{
    const std::size_t nDot = strPath.rfind('.');
    if (nDot == std::string::npos)
        return nullptr;
    const std::string strSuffix = QByteArray::fromStdString(strPath.substr(nDot + 1)).toLower().toStdString();
    for (const SImageFormat& format : ImageFormats()) {
        const auto& known = format.suffixes;
        if (format.pSave && std::find(known.begin(), known.end(), strSuffix) != known.end())
            return &format;
    }
    return nullptr;
}

std::string NotAnImage()
{
    std::vector<std::string_view> names;
    for (const SImageFormat& format : ImageFormats())
        names.emplace_back(format.pName);
    return "It is not an image in " + Join(names) + " format.";
}

std::string NotASuffix()
{
    std::vector<std::string_view> suffixes;
    for (const bool bFewColors : {false, true}) { // formats that may lose colours come last
        for (const SImageFormat& format : ImageFormats()) {
            if (format.pSave && format.bFewColors == bFewColors)
                suffixes.insert(suffixes.end(), format.suffixes.begin(), format.suffixes.end());
        }
    }
    return "The name must end in " + Join(suffixes) + '.';
}

std::vector<SImageFormatInfo> GetImageFormats()
{
    std::vector<SImageFormatInfo> infos;
    for (const SImageFormat& format : ImageFormats()) {
        SImageFormatInfo info;
        info.name = format.pName;
        info.suffixes.assign(format.suffixes.begin(), format.suffixes.end());
        info.mimeType = format.pMimeType;
        info.canLoad = format.pLoad != nullptr;
        info.canSave = format.pSave != nullptr;
        info.severalImages = format.pAddOthers != nullptr;
        info.fewColors = format.bFewColors;
        infos.push_back(std::move(info));
    }
    return infos;
}

} // namespace Vantor::Algorithms
