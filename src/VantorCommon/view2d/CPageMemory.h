// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <unordered_map>
#include <vector>

class CImageView2DModel;

namespace Vantor::Algorithms
{
class CImage;
}

/// The memory of rendered pages: the deferred images in the lists of all viewers keep their pixels while they
/// fit a limit; beyond it those go that were shown or rendered longest ago, and come back when they are
/// needed.
///
/// It never takes pixels from an image that anybody but one list holds by a shared pointer (a view, a job, a
/// step of the history, a host), nor from one that somebody could have changed. So it may keep more than the
/// limit. It looks when a page has been rendered and once a second, by the events of the GUI thread. GUI
/// thread only.
class VANTORCOMMON_EXPORT CPageMemory : public QObject
{
    Q_OBJECT

public:
    /// At the start.
    static constexpr qint64 kDefaultLimit = qint64(512) << 20;

    /// The only one; it belongs to the application object, which must be there.
    static CPageMemory& Get();
    ~CPageMemory() override;

    /// For the whole process. It holds from the next look on.
    /// @param nBytes  0 or more; 0 keeps only what is held
    void SetLimit(qint64 nBytes);
    qint64 GetLimit() const { return m_nLimit; } ///< in bytes
    /// The bytes of the deferred images that have pixels, of all lists.
    qint64 GetUsed() const;

    /// Looks after the images of a list, once or more, until it is destroyed.
    void Watch(CImageView2DModel* pModel);
    /// An image is shown, or has been rendered.
    void Use(const Vantor::Algorithms::CImage& image);
    /// Keeps within the limit, as far as that is possible.
    /// @param nComing  bytes that are about to be used
    void Trim(qint64 nComing = 0);
    /// The memory that the pixels of an image take, or will.
    static qint64 BytesOf(const Vantor::Algorithms::CImage& image);

private:
    struct SRendered;

    explicit CPageMemory(QObject* pParent);
    std::vector<SRendered> Rendered() const;

    qint64 m_nLimit = kDefaultLimit;
    std::vector<QPointer<CImageView2DModel>> m_vctModels;
    std::unordered_map<unsigned int, quint64> m_uses; ///< by identifier; the larger the later
    quint64 m_nUses = 0;
    QTimer m_timer;
};
