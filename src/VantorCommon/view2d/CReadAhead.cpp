// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CReadAhead.h>

#include <Vantor/image/CImage.h>

#include <QCoreApplication>
#include <QPointer>
#include <iterator>
#include <sys/stat.h>
#include <utility>

using Vantor::Algorithms::CImage;

namespace
{
/// What changes with a file, as far as the system tells.
struct SVersion {
    ino_t nFile = 0;
    off_t nSize = 0;
    timespec changed = {};
    bool operator==(const SVersion& other) const
    {
        return nFile == other.nFile && nSize == other.nSize && changed.tv_sec == other.changed.tv_sec &&
               changed.tv_nsec == other.changed.tv_nsec;
    }
};

SVersion VersionOf(const QString& strPath)
{
    struct stat status = {};
    if (::stat(strPath.toUtf8().constData(), &status) != 0)
        return {};
    return {status.st_ino, status.st_size, status.st_ctim};
}

qint64 BytesOf(const CImage& image)
{
    return qint64(image.GetStride()) * image.GetHeight();
}
} // namespace

struct CReadAhead::SFile {
    SVersion version;
    ImagePtr pImage;
};

CReadAhead::CReadAhead(QObject* pParent) : QObject(pParent)
{
}

CReadAhead::~CReadAhead() = default;

CReadAhead& CReadAhead::Get()
{
    static QPointer<CReadAhead> s_pOnly;
    if (!s_pOnly)
        s_pOnly = new CReadAhead(QCoreApplication::instance());
    return *s_pOnly;
}

qint64 CReadAhead::GetUsed() const
{
    qint64 nBytes = 0;
    for (const auto& [strPath, pFile] : m_files)
        nBytes += BytesOf(*pFile->pImage);
    return nBytes;
}

void CReadAhead::Want(const QStringList& lstPaths)
{
    for (auto it = m_files.begin(); it != m_files.end();)
        it = lstPaths.contains(it->first) ? std::next(it) : m_files.erase(it);
    m_lstWanted.clear();
    for (const QString& strPath : lstPaths)
        if (!strPath.isEmpty() && m_files.count(strPath) == 0 && strPath != m_strReading)
            m_lstWanted.append(strPath);
    if (m_pReading && !lstPaths.contains(m_strReading))
        CJobs::Get().Cancel(m_pReading);
    if (!m_pReading)
        ReadNext();
}

CReadAhead::ImagePtr CReadAhead::Take(const QString& strPath)
{
    m_lstWanted.removeAll(strPath);
    if (m_pReading && strPath == m_strReading)
        CJobs::Get().Cancel(m_pReading); // whoever asks reads it now
    const auto it = m_files.find(strPath);
    if (it == m_files.end())
        return nullptr;
    const std::shared_ptr<SFile> pFile = it->second;
    m_files.erase(it);
    return pFile->version == VersionOf(strPath) ? pFile->pImage : nullptr;
}

void CReadAhead::ReadNext()
{
    m_pReading.reset();
    m_strReading.clear();
    if (m_lstWanted.isEmpty()) {
        Q_EMIT signal_Done();
        return;
    }
    m_strReading = m_lstWanted.takeFirst();
    SJob sJob;
    sJob.dropped = [this] { ReadNext(); };
    m_pReading = CJobs::Get().Start(this, sJob, [this, strPath = m_strReading](Vantor::CProgress&) {
        const auto pFile = std::make_shared<SFile>();
        pFile->version = VersionOf(strPath);
        pFile->pImage = std::make_shared<CImage>();
        if (pFile->pImage->Load(strPath.toStdWString()) != 0)
            pFile->pImage.reset();
        return [this, strPath, pFile] { Keep(strPath, pFile); };
    });
}

void CReadAhead::Keep(const QString& strPath, const std::shared_ptr<SFile>& pFile)
{
    if (pFile->pImage && GetUsed() + BytesOf(*pFile->pImage) <= m_nLimit)
        m_files[strPath] = pFile;
    ReadNext();
}
