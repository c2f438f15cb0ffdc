// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/job/CJobs.h>

#include <QObject>
#include <QStringList>
#include <map>
#include <memory>

namespace Vantor::Algorithms
{
class CImage;
}

/// Image files that will probably be opened next, read beside the GUI thread before anybody opens them. With
/// SCenterOptions::bBackground a 2D controller that opens one of them shows it at once.
///
/// They are read one after the other. What cannot be read, is no image (a document has its own way to come
/// page by page), or was changed since is as if it had not been wanted. GUI thread only.
class VANTORCOMMON_EXPORT CReadAhead : public QObject
{
    Q_OBJECT

public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>; ///< whoever takes an image has it alone
    /// At the start.
    static constexpr qint64 kDefaultLimit = qint64(512) << 20;

    /// The only one; it belongs to the application object, which must be there.
    static CReadAhead& Get();
    ~CReadAhead() override;

    /// The memory of the images that wait, for the whole process; an image that exceeds it is dropped. It
    /// holds from the next file on.
    /// @param nBytes  0 or more
    void SetLimit(qint64 nBytes) { m_nLimit = nBytes; }
    qint64 GetLimit() const { return m_nLimit; } ///< in bytes
    qint64 GetUsed() const;                      ///< bytes of the images that wait

    /// Reads these files, the first first, and forgets all others.
    void Want(const QStringList& lstPaths);
    /// The image of a file, which does not wait any longer then; null when it has not been read.
    ImagePtr Take(const QString& strPath);

Q_SIGNALS:
    /// Every file that was wanted has been read, or cannot be.
    void signal_Done();

private:
    struct SFile;

    explicit CReadAhead(QObject* pParent);
    void ReadNext();
    void Keep(const QString& strPath, const std::shared_ptr<SFile>& pFile);

    qint64 m_nLimit = kDefaultLimit;
    QStringList m_lstWanted; ///< not yet read
    std::map<QString, std::shared_ptr<SFile>> m_files;
    QString m_strReading;
    CJobs::JobPtr m_pReading;
};
