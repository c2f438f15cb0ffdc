// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/job/CJobQueue.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What a finished step has done to a document, as one line of a journal tells it: first some objects go,
/// then some come or change, then they are put into an order. What cannot be painted here stays where it is.
struct SJournalStep {
    int nPage = 0;        ///< in its file
    std::string strImage; ///< path of its file when the document is about several
    /// The files that have something unsaved; one of an empty name for a document about one file.
    std::vector<std::string> vctUnsaved;
    bool bSaved = false; ///< the document is now as it was saved
    bool bAll = false;   ///< document replaces everything; the members below count for nothing
    std::vector<std::string> vctDeleted; ///< ids
    /// For each object of document's only page: nothing when it changes in its place, otherwise the id of
    /// the object above which it comes, empty for the bottom.
    std::vector<std::optional<std::string>> vctAbove;
    std::vector<std::string> vctOrder;                      ///< ids; empty: as it is
    std::optional<Vantor::Annotations::SDocument> document; ///< see bAll and vctAbove
};

/// The lines of journals. Any thread.
///
/// A line is a JSON object: what it says, then the document as the own format writes it, then "crc", the
/// CRC-32 of all that stands before it. The first line has the document to begin with.
namespace JournalText
{
/// @param nSteps      unsaved ones that are in the document
/// @param vctUnsaved  see SJournalStep
std::string HeaderLine(const QString& strImage, const Vantor::Annotations::SDocument& document, int nSteps,
                       const std::vector<std::string>& vctUnsaved = {});
/// Empty when the document cannot be written, such as with numbers that are not finite.
std::string StepLine(int nNumber, const SJournalStep& step);

/// What the lines of a journal come to.
struct SContent {
    bool bValid = false; ///< it has a first line
    QString strImage;    ///< path of the annotated image; empty when it has no file
    Vantor::Annotations::SDocument document;
    int nSteps = 0;
    std::vector<std::string> vctUnsaved; ///< see SJournalStep
    bool bSaved = true;                  ///< nothing in it is unsaved
    bool bTruncated = false;             ///< lines at the end cannot be read and were left out
};
SContent Replay(const std::string& bytes);
} // namespace JournalText

/// The unsaved steps of one store in a file that outlives the process, however that ends.
///
/// Every step is in the hands of the system when Write returns; what is more than a second old survives also
/// a loss of power. The file appears with the first step, is locked as long as this process lives, and goes
/// when everything is saved. A failure of the disk is told once in the log. GUI thread only.
class CAnnotationJournal : public QObject
{
public:
    CAnnotationJournal();
    /// The file stays if there is something unsaved in it.
    ~CAnnotationJournal() override;

    /// From here on: the document is saved, and steps start from it. What was written before is dropped.
    void Begin(std::shared_ptr<const Vantor::Annotations::SDocument> pDocument, const QString& strImage);
    void Write(const SJournalStep& step);
    /// Whether the file lacks a step, so that the next one has to tell the whole document.
    bool IsBehind() const { return m_bBehind; }
    /// Drops what was written.
    void Discard();

private:
    struct SNewFile;

    bool Open();
    void Append(const std::string& line);
    void Fail(const char* szWhat);
    void Sync();
    void StartCheckpoint();
    void FinishCheckpoint(const std::shared_ptr<SNewFile>& pNew);

    CJobQueue m_queue;
    QTimer m_sync;
    std::shared_future<std::string> m_header;
    QString m_strPath;
    int m_nFile = -1;
    int m_nSteps = 0;
    qint64 m_nSize = 0;
    qint64 m_nBase = 0;    ///< size of the first line
    int m_nGeneration = 0; ///< grows with every file
    bool m_bSaved = true;
    bool m_bBehind = false;
    bool m_bFailed = false;     ///< a failure was told
    bool m_bCheckpoint = false; ///< one is being made
};
