// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationJournal_p.h>

#include <VantorCommon/annotation/store/AnnotationRecovery.h>
#include <VantorCommon/annotation/store/JournalFile_p.h>
#include <VantorCommon/log/CLogger.h>

#include <QRandomGenerator>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using Vantor::Annotations::SDocument;

namespace
{
constexpr int kSyncInterval = 1000;           // milliseconds
constexpr qint64 kCheckpointSize = 64 * 1024; // bytes; a shorter file is never made anew
constexpr int kCheckpointGrowth = 4;          // times the first line
constexpr std::size_t kMuch = 200;            // objects whose first line is written ahead

std::atomic<int> s_nJournals{0};

/// On a thread of the journal's.
std::string WriteHeader(const QString& strImage, const SDocument& document)
{
    try {
        return JournalText::HeaderLine(strImage, document, 0);
    } catch (const std::bad_alloc&) {
        return {};
    }
}
} // namespace

/// A file that a thread makes in place of a long one. It goes if nobody takes it over.
struct CAnnotationJournal::SNewFile {
    int nFile = -1;
    qint64 nSize = 0;
    qint64 nRead = 0; ///< bytes of the long file that are in it
    int nGeneration = 0;
    QString strPath;

    ~SNewFile()
    {
        if (nFile < 0)
            return;
        JournalFile::Remove(strPath);
        ::close(nFile);
    }
};

CAnnotationJournal::CAnnotationJournal()
{
    m_sync.setSingleShot(true);
    m_sync.setInterval(kSyncInterval);
    connect(&m_sync, &QTimer::timeout, this, &CAnnotationJournal::Sync);
    Begin(std::make_shared<const SDocument>(), QString());
}

CAnnotationJournal::~CAnnotationJournal()
{
    m_queue.Wait();
    if (m_bSaved)
        Discard();
    else if (m_nFile >= 0)
        ::close(m_nFile);
}

void CAnnotationJournal::Begin(std::shared_ptr<const SDocument> pDocument, const QString& strImage)
{
    Discard();
    const auto write = [pDocument, strImage] { return WriteHeader(strImage, *pDocument); };
    const bool bMuch = std::any_of(pDocument->pages.begin(), pDocument->pages.end(),
                                   [](const auto& page) { return page.objects.size() > kMuch; });
    if (!bMuch) {
        m_header = std::async(std::launch::deferred, write).share();
        return;
    }
    const auto pTask = std::make_shared<std::packaged_task<std::string()>>(write);
    m_header = pTask->get_future().share();
    m_queue.Start([pTask] { (*pTask)(); });
}

void CAnnotationJournal::Discard()
{
    if (m_nFile >= 0) {
        JournalFile::Remove(m_strPath);
        ::close(m_nFile);
    }
    m_nFile = -1;
    m_nSteps = 0;
    m_nSize = 0;
    m_bSaved = true;
    m_bBehind = false;
    ++m_nGeneration;
    m_sync.stop();
}

/// The file gets its name when it has a first line and its lock: who looks for lost work never sees it
/// without them.
bool CAnnotationJournal::Open()
{
    const std::string header = m_header.get();
    const QString strName = QStringLiteral("%1-%2-%3.jsonl")
                                .arg(::getpid())
                                .arg(++s_nJournals)
                                .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
    m_strPath = AnnotationRecovery::GetFolder() + QLatin1Char('/') + strName;
    const QString strNew = m_strPath + QLatin1String(JournalFile::kNewSuffix);
    m_nFile = header.empty() ? -1 : JournalFile::Create(strNew);
    if (m_nFile < 0)
        return false;
    if (JournalFile::WriteAll(m_nFile, header) && JournalFile::Rename(strNew, m_strPath)) {
        m_nBase = m_nSize = static_cast<qint64>(header.size());
        return true;
    }
    JournalFile::Remove(strNew);
    ::close(m_nFile);
    m_nFile = -1;
    return false;
}

void CAnnotationJournal::Fail(const char* szWhat)
{
    m_bBehind = true;
    if (!std::exchange(m_bFailed, true))
        CLogger::Write(WARNING, "Cannot %s the journal of annotations: %s", szWhat, std::strerror(errno));
}

void CAnnotationJournal::Write(const SJournalStep& step)
{
    if (m_nFile < 0 && step.bSaved)
        return; // back where it began
    if (m_nFile < 0 && !Open())
        return Fail("make");
    m_bSaved = step.bSaved;
    m_bBehind = m_bBehind && !step.bAll;
    Append(JournalText::StepLine(++m_nSteps, step));
}

void CAnnotationJournal::Append(const std::string& line)
{
    if (line.empty())
        return;
    if (!JournalFile::WriteAll(m_nFile, line)) {
        // Half a line would hide those behind it.
        if (::ftruncate(m_nFile, m_nSize) != 0)
            Discard();
        return Fail("write");
    }
    m_nSize += static_cast<qint64>(line.size());
    if (!m_sync.isActive())
        m_sync.start();
    if (m_nSize > kCheckpointSize && m_nSize > kCheckpointGrowth * m_nBase && !m_bCheckpoint)
        StartCheckpoint();
}

void CAnnotationJournal::Sync()
{
    const int nFile = m_nFile >= 0 ? ::fcntl(m_nFile, F_DUPFD_CLOEXEC, 0) : -1;
    if (nFile < 0)
        return;
    m_queue.Start([nFile] {
        ::fdatasync(nFile);
        ::close(nFile);
    });
}

void CAnnotationJournal::StartCheckpoint()
{
    m_bCheckpoint = true;
    const auto pNew = std::make_shared<SNewFile>();
    pNew->nRead = m_nSize;
    pNew->nGeneration = m_nGeneration;
    pNew->strPath = m_strPath + QLatin1String(JournalFile::kNewSuffix);
    m_queue.Start([this, pNew, strPath = m_strPath] {
        try {
            const auto content = JournalText::Replay(JournalFile::Read(strPath, pNew->nRead));
            const std::string header = content.bValid && !content.bTruncated
                                           ? JournalText::HeaderLine(content.strImage, content.document,
                                                                     content.nSteps, content.vctUnsaved)
                                           : std::string();
            pNew->nFile = header.empty() ? -1 : JournalFile::Create(pNew->strPath);
            pNew->nSize = static_cast<qint64>(header.size());
            if (pNew->nFile >= 0 &&
                (!JournalFile::WriteAll(pNew->nFile, header) || ::fdatasync(pNew->nFile) != 0))
                pNew->nSize = 0;
        } catch (const std::bad_alloc&) {
            pNew->nSize = 0;
        }
        QMetaObject::invokeMethod(
            this, [this, pNew] { FinishCheckpoint(pNew); }, Qt::QueuedConnection);
    });
}

/// The steps since the beginning of the checkpoint are few; they are copied here.
void CAnnotationJournal::FinishCheckpoint(const std::shared_ptr<SNewFile>& pNew)
{
    m_bCheckpoint = false;
    if (pNew->nFile < 0 || pNew->nSize == 0 || pNew->nGeneration != m_nGeneration)
        return;
    const std::string bytes = JournalFile::Read(m_strPath, m_nSize);
    const std::string tail = bytes.substr(std::min(bytes.size(), static_cast<std::size_t>(pNew->nRead)));
    if (static_cast<qint64>(bytes.size()) != m_nSize || !JournalFile::WriteAll(pNew->nFile, tail) ||
        !JournalFile::Rename(pNew->strPath, m_strPath))
        return;
    ::close(m_nFile);
    m_nFile = std::exchange(pNew->nFile, -1);
    m_nBase = pNew->nSize;
    m_nSize = pNew->nSize + static_cast<qint64>(tail.size());
    Sync();
    m_queue.Start([] { JournalFile::SyncFolder(); });
}
