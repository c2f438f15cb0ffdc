// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/log/CLogger.h>

#include <algorithm>
#include <atomic>
#include <utility>

namespace
{
/// Gives up images that have left a list. Deferred ones may have much memory, and end the processes that
/// render them, which takes a while.
void Release(std::vector<CImageView2DModel::ImagePtr> vctImages)
{
    const auto isDeferred = [](const auto& pImage) { return pImage && pImage->IsDeferred(); };
    if (std::any_of(vctImages.begin(), vctImages.end(), isDeferred))
        CJobs::Get().ReleaseElsewhere(
            std::make_shared<std::vector<CImageView2DModel::ImagePtr>>(std::move(vctImages)));
}
} // namespace

CImageView2DModel::CImageView2DModel(QObject* parent) : CBaseModel(parent)
{
}

CImageView2DModel::~CImageView2DModel() = default;

void CImageView2DModel::SetMousePosition(const QPointF& ptPosition)
{
    if (ptPosition == m_ptMousePosition && !m_bMouseForgotten)
        return;
    m_bMouseForgotten = false;
    m_ptMousePosition = ptPosition;
    Q_EMIT signal_MousePositionChanged();
}

void CImageView2DModel::ForgetMousePosition()
{
    m_bMouseForgotten = true;
    Q_EMIT signal_MousePositionForgotten();
}

QPointF CImageView2DModel::GetMousePosition() const
{
    return m_ptMousePosition;
}

int CImageView2DModel::GetImageCount() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_vctImages.size());
}

int CImageView2DModel::GetCurrentIndex() const
{
    const std::lock_guard lock(m_mutex);
    return m_nCurrentIndex;
}

CImageView2DModel::ImagePtr CImageView2DModel::GetImage(int nIndex) const
{
    const std::lock_guard lock(m_mutex);
    return IsInRange(nIndex) ? m_vctImages[static_cast<std::size_t>(nIndex)] : nullptr;
}

CImageView2DModel::ImagePtr CImageView2DModel::GetCurrentImage() const
{
    const std::lock_guard lock(m_mutex);
    return IsInRange(m_nCurrentIndex) ? m_vctImages[static_cast<std::size_t>(m_nCurrentIndex)] : nullptr;
}

void CImageView2DModel::SetImage(ImagePtr pImage, int nIndex)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!IsInRange(nIndex))
            return;
        m_vctImages[static_cast<std::size_t>(nIndex)].swap(pImage);
    }
    Q_EMIT signal_ChangeImageList();
    if (nIndex == GetCurrentIndex())
        Q_EMIT signal_ChangeCurrentImage();
    CLogger::Write(NORMAL, "Set Image At %d", nIndex);
}

void CImageView2DModel::SetImages(const std::vector<ImagePtr>& vctImages)
{
    std::vector<ImagePtr> vctCopy(vctImages);
    {
        const std::lock_guard lock(m_mutex);
        m_vctImages.swap(vctCopy);
        m_nCurrentIndex = 0;
    }
    Q_EMIT signal_ChangeImageList();
    Q_EMIT signal_ChangeCurrentImage();
    Release(std::move(vctCopy));
}

void CImageView2DModel::PushImage(ImagePtr pImage)
{
    {
        const std::lock_guard lock(m_mutex);
        m_vctImages.push_back(std::move(pImage));
        m_nCurrentIndex = static_cast<int>(m_vctImages.size()) - 1;
    }
    Q_EMIT signal_ChangeImageList();
    Q_EMIT signal_ChangeCurrentImage();
    Q_EMIT signal_ChangeCurrentIndex();
    CLogger::Write(NORMAL, "Push Image");
}

void CImageView2DModel::SetCurrentIndex(int nIndex)
{
    if (nIndex != GetCurrentIndex() && StepTo(nIndex))
        CLogger::Write(NORMAL, "Set Current Index %d", nIndex);
}

void CImageView2DModel::Next()
{
    // Without a current image there is no next one: an index of -1 stays.
    const int nIndex = GetCurrentIndex() + 1;
    if (nIndex >= 1 && StepTo(nIndex))
        CLogger::Write(NORMAL, "Next Image At %d", nIndex);
}

void CImageView2DModel::Previous()
{
    const int nIndex = GetCurrentIndex() - 1;
    if (StepTo(nIndex))
        CLogger::Write(NORMAL, "Previous Image At %d", nIndex);
}

void CImageView2DModel::SetCurrentImage(ImagePtr pImage)
{
    std::vector<ImagePtr> vctDropped;
    bool bReplaced = false;
    {
        const std::lock_guard lock(m_mutex);
        bReplaced = IsInRange(m_nCurrentIndex);
        if (bReplaced) {
            m_vctImages[static_cast<std::size_t>(m_nCurrentIndex)].swap(pImage);
        } else {
            m_vctImages.swap(vctDropped);
            m_vctImages.push_back(std::move(pImage));
        }
    }
    if (!bReplaced)
        Q_EMIT signal_ChangeImageList();
    Q_EMIT signal_ChangeCurrentImage();
}

void CImageView2DModel::CloseCurrentImage()
{
    ImagePtr pClosed;
    {
        const std::lock_guard lock(m_mutex);
        if (m_vctImages.empty())
            return;
        if (IsInRange(m_nCurrentIndex)) {
            const auto it = m_vctImages.begin() + m_nCurrentIndex;
            pClosed = std::move(*it);
            m_vctImages.erase(it);
        }
        if (!IsInRange(m_nCurrentIndex))
            --m_nCurrentIndex;
    }
    Q_EMIT signal_ChangeImageList();
    Q_EMIT signal_ChangeCurrentImage();
    Release({std::move(pClosed)});
}

void CImageView2DModel::Clear()
{
    SetImages({});
    CLogger::Write(NORMAL, "Clear");
}

void CImageView2DModel::AskForPixels(int nIndex)
{
    if (GetImage(nIndex))
        Q_EMIT signal_PixelsWanted(nIndex);
}

void CImageView2DModel::TellPixels(int nIndex)
{
    if (GetImage(nIndex))
        Q_EMIT signal_PixelsCame(nIndex);
}

/// While the mutex is held, nobody can get the image from the list.
bool CImageView2DModel::DropPixels(int nIndex)
{
    const std::lock_guard lock(m_mutex);
    if (!IsInRange(nIndex))
        return false;
    const ImagePtr& pImage = m_vctImages[static_cast<std::size_t>(nIndex)];
    if (!pImage || pImage.use_count() != 1)
        return false;
    // What the last other owner has read, it read before it let go.
    std::atomic_thread_fence(std::memory_order_acquire);
    return pImage->DropPixels();
}

/// Call with the mutex held. A negative index becomes a large unsigned one, which is out of range.
bool CImageView2DModel::IsInRange(int nIndex) const
{
    return static_cast<std::size_t>(nIndex) < m_vctImages.size();
}

/// Makes an index current and emits the change; false, without a signal, if it is out of range.
bool CImageView2DModel::StepTo(int nIndex)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!IsInRange(nIndex))
            return false;
        m_nCurrentIndex = nIndex;
    }
    Q_EMIT signal_ChangeCurrentIndex();
    Q_EMIT signal_ChangeCurrentImage();
    return true;
}
