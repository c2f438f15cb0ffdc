// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/Annotations.h>

#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/file/AtomicFile_p.h>
#include <Vantor/file/OpenFile_p.h>

#include <QCryptographicHash>
#include <QFile>

#include <sys/stat.h>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kSidecarSuffix = ".vantor.json";

std::string NameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string Beside(const std::string& path, const char* pName)
{
    return path.substr(0, path.rfind('/') + 1) + pName;
}

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The whole file, at most kMaxBytes.
CResult ReadFile(const std::string& path, std::string& bytes)
{
    QFile file;
    std::string strReason;
    if (!OpenRegularFile(path, file, &strReason))
        return CResult::Failure(strReason);
    // The size may be wrong: files of the system have none, others grow.
    const QByteArray content = file.read(static_cast<qint64>(kMaxBytes) + 1);
    if (content.size() > static_cast<int>(kMaxBytes))
        return CResult::Failure(kTooLarge);
    if (file.error() != QFileDevice::NoError)
        return CResult::Failure("The file cannot be read.");
    bytes = content.toStdString();
    return CResult::Success();
}

CResult WriteFile(const std::string& path, const std::string& bytes)
{
    AtomicFile file;
    CResult result = file.Open(path);
    if (!result.IsSuccess())
        return result;
    file.Device().write(bytes.data(), static_cast<qint64>(bytes.size()));
    return file.Commit();
}

bool Exists(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0;
}

/// Refuses to replace annotations of ours that this version cannot read and so not keep.
CResult CheckReplaced(const std::string& path, const std::string& format)
{
    if (!Exists(path))
        return CResult::Success();
    const auto kept = [&path](const std::string& why) {
        return CResult::Failure('"' + NameOf(path) + "\" is there already and is not overwritten. " + why);
    };
    std::string bytes;
    const CResult result = ReadFile(path, bytes);
    if (format != kOwnFormat && !EndsWith(path, kSidecarSuffix) && !IsOwn(bytes, path))
        return CResult::Success();
    if (!result.IsSuccess())
        return kept(result.GetReason());
    SDocument old;
    const SReport report = Read(bytes, kOwnFormat, SContext(), old);
    if (!report.failure.empty())
        return kept(report.failure);
    return old.IsReadOnly() ? kept("It was saved by a later version.") : CResult::Success();
}

/// It tells other files apart that come by themselves, not those that are made to have the same one: MD5
/// takes a fifth of the time of SHA-256.
std::string DigestOf(const std::string& bytes)
{
    return QCryptographicHash::hash(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())),
                                    QCryptographicHash::Md5)
        .toHex()
        .toStdString();
}

/// Whether the file at the path is the one that the caller knows.
bool IsKnown(const std::string& path, const std::optional<std::string>& digest)
{
    std::string bytes;
    return digest && !digest->empty() && ReadFile(path, bytes).IsSuccess() && DigestOf(bytes) == *digest;
}
} // namespace

SReport Load(const std::string& path, const std::string& format, SContext context, SDocument& document)
{
    std::string bytes;
    const CResult result = ReadFile(path, bytes);
    if (!result.IsSuccess())
        return {result.GetReason(), {}};
    const std::string strFormat = format.empty() ? FormatOf(bytes, NameOf(path)) : format;
    if (strFormat.empty())
        return {"It is not a file of annotations.", {}};
    const SFormat* pFormat = FindFormat(strFormat);
    // Without the names they are numbers: a file that cannot be read is as good as none.
    if (pFormat && pFormat->pClasses && context.classes.empty())
        (void)ReadFile(Beside(path, pFormat->pClasses), context.classes).IsSuccess();
    SReport report = Read(bytes, strFormat, context, document);
    if (report.failure.empty() && !document.IsReadOnly())
        report.digest = DigestOf(bytes);
    return report;
}

SReport Save(const SDocument& document, const std::string& path, const std::string& format, SContext context,
             const std::optional<std::string>& known)
{
    const SFormat* pFormat = FindFormat(format);
    const std::string strClasses =
        pFormat && pFormat->pClasses ? Beside(path, pFormat->pClasses) : std::string();
    // Only what this version has read or written whole has a digest.
    const bool bKnown = IsKnown(path, known);
    CResult result = bKnown ? CResult::Success() : CheckReplaced(path, format);
    if (result.IsSuccess() && known && !bKnown && Exists(path))
        return {
            '"' + NameOf(path) + "\" was changed by another program and is not overwritten.", {}, {}, true};
    // The classes that are there already keep their numbers.
    if (result.IsSuccess() && !strClasses.empty() && Exists(strClasses))
        result = ReadFile(strClasses, context.classes);
    if (!result.IsSuccess())
        return {result.GetReason(), {}};
    const std::string strOldClasses = context.classes;
    std::string bytes;
    SReport report = Write(document, format, context, bytes);
    if (!report.failure.empty())
        return report;
    // Names without use do no harm, numbers without names do: the names go first.
    if (!strClasses.empty() && (context.classes != strOldClasses || !Exists(strClasses)))
        result = WriteFile(strClasses, context.classes);
    if (result.IsSuccess())
        result = WriteFile(path, bytes);
    if (!result.IsSuccess())
        return {result.GetReason(), {}};
    report.digest = DigestOf(bytes);
    return report;
}

std::string SidecarOf(const std::string& imagePath)
{
    return imagePath + kSidecarSuffix;
}

SSource IdentityOf(const std::string& path)
{
    SSource source;
    source.name = NameOf(path);
    QFile file;
    if (!OpenRegularFile(path, file))
        return source;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!hash.addData(&file))
        return source;
    source.bytes = static_cast<std::uint64_t>(file.pos());
    source.sha256 = hash.result().toHex().toStdString();
    return source;
}

bool IsOther(const SSource& source, const std::string& path)
{
    struct stat status = {};
    if (source.sha256.empty() || ::stat(path.c_str(), &status) != 0)
        return false;
    if (source.bytes != 0 && source.bytes != static_cast<std::uint64_t>(status.st_size))
        return true;
    const SSource now = IdentityOf(path);
    return !now.sha256.empty() && now.sha256 != source.sha256;
}

} // namespace Vantor::Annotations
