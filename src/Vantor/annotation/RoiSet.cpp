// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ForeignObjects_p.h>
#include <Vantor/annotation/RoiFiles_p.h>
#include <Vantor/annotation/ZipArchive_p.h>

#include <QHash>
#include <QString>

#include <algorithm>

namespace Vantor::Annotations
{

namespace
{
constexpr int kMaxEntryName = 200; // letters; file systems take 255 bytes
const QString kSuffix = QStringLiteral(".roi");

/// The name of an entry: no folders, no control characters, no name twice.
/// @param taken  how often each name was wanted, in folded case
QString EntryName(const std::string& name, QHash<QString, int>& taken)
{
    QString base = QString::fromStdString(name).left(kMaxEntryName).trimmed();
    for (QChar& letter : base) {
        if (letter.unicode() < ' ' || QStringLiteral("/\\:*?\"<>|").contains(letter))
            letter = QLatin1Char('_');
    }
    if (base.isEmpty() || base.startsWith(QLatin1Char('.')))
        base.prepend(QStringLiteral("region"));
    QString unique = base;
    while (taken.contains(unique.toCaseFolded()))
        unique = base + QLatin1Char('-') + QString::number(taken[base.toCaseFolded()]++);
    taken.insert(unique.toCaseFolded(), 1);
    return unique;
}

void TakeRegion(const std::string& entry, SRegion region, const SContext& context, CForeignReading& reading,
                Remarks& remarks)
{
    reading.GoToPage(std::max(region.page - 1, 0), context);
    for (SObject& object : region.objects) {
        if (object.name.empty())
            object.name = QString::fromStdString(entry).chopped(kSuffix.size()).toStdString();
        if (!region.remark.empty())
            remarks.push_back({object.name, region.remark});
        reading.Take(std::move(object));
    }
}
} // namespace

bool IsRoiSet(const std::string& bytes, const std::string& fileName)
{
    return bytes.compare(0, 2, "PK") == 0 &&
           QString::fromStdString(fileName).endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive);
}

CResult ReadRoiSet(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks)
{
    CForeignReading reading(document, remarks);
    reading.GoToPage(0, context);
    const auto visit = [&](const std::string& name, const std::string& content) {
        if (!QString::fromStdString(name).endsWith(kSuffix, Qt::CaseInsensitive)) {
            if (!content.empty()) // a folder is nothing to tell of
                reading.Skip(name, "It is left out: its name is not that of a region.");
            return true;
        }
        SRegion region;
        const CResult result = DecodeRegion(content, region);
        if (result.IsSuccess())
            TakeRegion(name, std::move(region), context, reading, remarks);
        else
            reading.Skip(name, "It is left out. " + result.GetReason());
        return !reading.IsFull();
    };
    const CResult result = ReadZip(bytes, visit, remarks);
    const CResult end = reading.Finish();
    return result.IsSuccess() ? end : result;
}

CResult WriteRoiSet(const SDocument& document, SContext&, std::string& bytes, Remarks& remarks)
{
    CZipWriter archive;
    QHash<QString, int> taken;
    for (const SPage& page : document.pages) {
        TellPageLosses(document, page, remarks);
        if (!page.image.empty())
            remarks.push_back({"", "The file does not keep the name of the image " + page.image + "."});
        const int nPage = document.pages.size() > 1 ? page.page + 1 : 0;
        for (auto object = page.objects.rbegin(); object != page.objects.rend(); ++object) {
            if (!IsRegionOfImageJ(*object, remarks))
                continue;
            if (static_cast<std::size_t>(taken.size()) == CZipWriter::kMaxEntries)
                return CResult::Failure("A set of regions holds at most 65,535 of them.");
            const QString name = EntryName(object->name, taken) + kSuffix;
            archive.Add(name.toStdString(), EncodeRegion(*object, nPage, remarks));
        }
    }
    bytes = archive.Finish();
    return CResult::Success();
}

} // namespace Vantor::Annotations
