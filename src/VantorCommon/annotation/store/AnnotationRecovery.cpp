// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationRecovery.h>

#include <VantorCommon/annotation/store/AnnotationJournal_p.h>
#include <VantorCommon/annotation/store/JournalFile_p.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <optional>
#include <unistd.h>

using Vantor::Annotations::SPage;
using Vantor::Annotations::SReport;

namespace
{
constexpr std::size_t kMaxSets = 20;
constexpr int kMaxDays = 30;
constexpr qint64 kMaxBytes = qint64(512) * 1024 * 1024; // of a journal

/// Holds a journal that nobody holds, as long as it lives.
class CHeld
{
public:
    explicit CHeld(const QString& strPath) : m_nFile(JournalFile::OpenUnheld(strPath)) {}
    ~CHeld()
    {
        if (m_nFile >= 0)
            ::close(m_nFile);
    }
    CHeld(const CHeld&) = delete;
    CHeld& operator=(const CHeld&) = delete;
    explicit operator bool() const { return m_nFile >= 0; }

private:
    int m_nFile;
};

JournalText::SContent ReadJournal(const QString& strPath)
{
    return JournalText::Replay(JournalFile::Read(strPath, kMaxBytes));
}

/// A journal of sets per image names the image of each page; one that does not is about one file.
std::vector<AnnotationRecovery::SImage> ImagesOf(const JournalText::SContent& content)
{
    std::vector<AnnotationRecovery::SImage> vctImages;
    for (const std::string& image : content.vctUnsaved) {
        if (image.empty())
            continue;
        AnnotationRecovery::SImage found;
        if (image[0] != '#')
            found.strImage = QString::fromStdString(image);
        for (SPage page : content.document.pages) {
            if (page.image != image)
                continue;
            page.image.clear();
            found.document.pages.push_back(std::move(page));
        }
        vctImages.push_back(std::move(found));
    }
    if (vctImages.empty())
        vctImages.push_back({content.strImage, content.document});
    return vctImages;
}

/// Nothing when there is nothing unsaved in it.
std::optional<AnnotationRecovery::SFound> Look(const QFileInfo& info)
{
    const auto content = ReadJournal(info.absoluteFilePath());
    if (!content.bValid || content.bSaved)
        return std::nullopt;
    AnnotationRecovery::SFound found;
    found.strJournal = info.absoluteFilePath();
    found.time = info.lastModified();
    found.nSteps = content.nSteps;
    for (const auto& image : ImagesOf(content)) {
        found.lstImages.append(image.strImage);
        for (const SPage& page : image.document.pages)
            found.nObjects += static_cast<int>(page.objects.size());
    }
    return found;
}
} // namespace

QString AnnotationRecovery::GetFolder()
{
    const QByteArray state = qgetenv("XDG_STATE_HOME");
    const QString strState =
        state.startsWith('/') ? QString::fromUtf8(state) : QDir::homePath() + QStringLiteral("/.local/state");
    return strState + QStringLiteral("/vantor/journal");
}

std::vector<AnnotationRecovery::SFound> AnnotationRecovery::Find()
{
    std::vector<SFound> vctFound;
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-kMaxDays);
    const QStringList lstNames{QStringLiteral("*.jsonl"),
                               QStringLiteral("*.jsonl") + QLatin1String(JournalFile::kNewSuffix)};
    for (const QFileInfo& info : QDir(GetFolder()).entryInfoList(lstNames, QDir::Files, QDir::Time)) {
        const CHeld held(info.absoluteFilePath());
        if (!held)
            continue;
        const bool bOld = info.lastModified() < oldest;
        const bool bUnfinished = info.suffix() != QLatin1String("jsonl");
        // Its owner may just be about to lock it.
        if (bUnfinished && !bOld)
            continue;
        const bool bKeep = !bOld && !bUnfinished && vctFound.size() < kMaxSets;
        const auto found = bKeep ? Look(info) : std::nullopt;
        if (found)
            vctFound.push_back(*found);
        else
            JournalFile::Remove(info.absoluteFilePath());
    }
    return vctFound;
}

SReport AnnotationRecovery::Read(const QString& strJournal, std::vector<SImage>& vctImages)
{
    SReport report;
    const auto content = ReadJournal(strJournal);
    if (!content.bValid) {
        report.failure = "The journal cannot be read.";
        return report;
    }
    vctImages = ImagesOf(content);
    if (content.bTruncated)
        report.remarks.push_back({{},
                                  "The journal is damaged behind step " + std::to_string(content.nSteps) +
                                      "; what was done after it is lost."});
    return report;
}

void AnnotationRecovery::Discard(const QString& strJournal)
{
    if (const CHeld held(strJournal); held)
        JournalFile::Remove(strJournal);
}
