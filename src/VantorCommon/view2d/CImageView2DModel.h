// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QPointF>
#include <memory>
#include <mutex>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

/// The images of one viewer (the pages of a document, the images added to the view), the index of the one on
/// screen and the image position last under the mouse.
///
/// Entries may be null. The current index is not kept in range by every operation; a value outside
/// 0..count-1 means that there is no current image. Everything that changes the model runs on the GUI thread
/// and its signals go out synchronously; the getters of list and index may be called on any thread.
class VANTORCOMMON_EXPORT CImageView2DModel : public CBaseModel
{
    Q_OBJECT

public:
    /// Shared with whoever shows or processes an image; what is in the list is never changed.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Without images, the index 0; the Qt parent, if any, owns the model.
    explicit CImageView2DModel(QObject* parent = nullptr);
    ~CImageView2DModel() override;

    /// @{
    /// In image coordinates (pixels, any value). Emits only when the point differs by QPointF's own fuzzy
    /// comparison.
    void SetMousePosition(const QPointF& ptPosition);
    QPointF GetMousePosition() const;
    /// @}
    /// Tells who shows the point under the mouse that it is not known: another image came, say, or the mouse
    /// went. The next SetMousePosition is announced whatever its point.
    void ForgetMousePosition();

    int GetImageCount() const;   ///< the entries, null ones too
    int GetCurrentIndex() const; ///< any value, see above
    /// Null outside 0..count-1.
    ImagePtr GetImage(int nIndex) const;
    /// Null when there is no current image, or when its entry is null.
    ImagePtr GetCurrentImage() const;

    /// Replaces one entry; nothing happens outside 0..count-1. Emits list, and current image when it was
    /// that.
    void SetImage(ImagePtr pImage, int nIndex);
    /// Replaces the whole list and shows its first image. Emits list, current image.
    void SetImages(const std::vector<ImagePtr>& vctImages);
    /// Appends an image and shows it. Emits list, current image, current index.
    void PushImage(ImagePtr pImage);
    /// Shows another image; nothing happens outside 0..count-1. Emits current index, current image.
    void SetCurrentIndex(int nIndex);
    /// @{
    /// Steps to the neighbour, if there is one. Emits current index, current image.
    void Next();
    void Previous();
    /// @}
    /// Replaces the current image and emits current image. Without one the given image becomes the only
    /// entry; emits list, current image. Deliberate: in that case the index stays as it is, so the image is
    /// not current unless the index was 0.
    void SetCurrentImage(ImagePtr pImage);
    /// Drops the current image; the following one, else the previous one, becomes current, and closing the
    /// only image leaves the index -1. Emits list, current image; nothing at all for an empty list.
    /// Deliberate: without a current image only the index is decremented, the list stays.
    void CloseCurrentImage();
    /// Empties the list; the index becomes 0. Emits list, current image, for an empty list too.
    void Clear();

Q_SIGNALS:
    void signal_MousePositionChanged();   ///< the mouse is over another point
    void signal_MousePositionForgotten(); ///< the point under the mouse is not known
    void signal_ChangeImageList();        ///< entries came, went or were replaced
    void signal_ChangeCurrentIndex();     ///< another entry was stepped to
    void signal_ChangeCurrentImage();     ///< another image, or none, is current

private:
    bool IsInRange(int nIndex) const;
    bool StepTo(int nIndex);

    QPointF m_ptMousePosition;
    bool m_bMouseForgotten = false;
    std::vector<ImagePtr> m_vctImages;
    int m_nCurrentIndex = 0;
    /// Guards list and index. Never held while a signal goes out.
    mutable std::mutex m_mutex;
};
