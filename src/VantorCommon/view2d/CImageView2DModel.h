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
/// Entries may be null. Not every operation keeps the current index in range; a value outside 0..count-1
/// means that there is no current image. Only the GUI thread changes the model, and signals are emitted
/// synchronously; any thread may call the getters of list and index.
class VANTORCOMMON_EXPORT CImageView2DModel : public CBaseModel
{
    Q_OBJECT

public:
    /// Shared with all that show or process an image; nobody changes an image in the list.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Starts without images, at index 0; the Qt parent, if any, owns the model.
    explicit CImageView2DModel(QObject* parent = nullptr);
    ~CImageView2DModel() override;

    /// @{
    /// In image coordinates (pixels, any value). Emits only when the point differs by QPointF's fuzzy
    /// comparison.
    void SetMousePosition(const QPointF& ptPosition);
    QPointF GetMousePosition() const;
    /// @}
    /// Announces that the point under the mouse is unknown, for example because the image changed or the
    /// mouse left. The next SetMousePosition emits whatever its point.
    void ForgetMousePosition();

    int GetImageCount() const;   ///< all entries, null ones too
    int GetCurrentIndex() const; ///< any value, see above
    /// Null outside 0..count-1.
    ImagePtr GetImage(int nIndex) const;
    /// Null when there is no current image, or when its entry is null.
    ImagePtr GetCurrentImage() const;

    /// Replaces one entry; does nothing outside 0..count-1. Emits list, and current image if the entry is
    /// current.
    void SetImage(ImagePtr pImage, int nIndex);
    /// Replaces the whole list and shows its first image. Emits list, current image.
    void SetImages(const std::vector<ImagePtr>& vctImages);
    /// Appends an image and shows it. Emits list, current image, current index.
    void PushImage(ImagePtr pImage);
    /// Shows another image; does nothing outside 0..count-1. Emits current index, current image.
    void SetCurrentIndex(int nIndex);
    /// @{
    /// Steps to the neighbouring image, if there is one. Emits current index, current image.
    void Next();
    void Previous();
    /// @}
    /// Replaces the current image and emits current image. Without one the given image becomes the only
    /// entry; emits list, current image. Deliberate: in that case the index does not change, so the image is
    /// current only if the index was 0.
    void SetCurrentImage(ImagePtr pImage);
    /// Drops the current image; the following one, else the previous one, becomes current, and closing the
    /// only image leaves the index -1. Emits list, current image; nothing at all for an empty list.
    /// Deliberate: without a current image it only decrements the index; the list stays.
    void CloseCurrentImage();
    /// Empties the list; the index becomes 0. Emits list, current image, even for an empty list.
    void Clear();

    /// @{
    /// Of deferred images (CImage::Defer); do nothing outside 0..count-1. AskForPixels says that somebody
    /// would like to see the pixels soon, TellPixels that they are there; both only emit.
    void AskForPixels(int nIndex);
    void TellPixels(int nIndex);
    /// @}
    /// Gives back the memory of a deferred image if nobody but this list holds it, once: so whoever uses
    /// pixels holds the image by a shared pointer, and never locks a weak one on another thread.
    /// @return whether there was memory to give back
    bool DropPixels(int nIndex);

Q_SIGNALS:
    void signal_MousePositionChanged();   ///< the mouse is over another point
    void signal_MousePositionForgotten(); ///< the point under the mouse is unknown
    void signal_ChangeImageList();        ///< entries were added, removed or replaced
    void signal_ChangeCurrentIndex();     ///< another entry was stepped to
    void signal_ChangeCurrentImage();     ///< another image, or none, is current
    void signal_PixelsWanted(int nIndex); ///< see AskForPixels
    void signal_PixelsCame(int nIndex);   ///< see TellPixels

private:
    bool IsInRange(int nIndex) const;
    bool StepTo(int nIndex);

    QPointF m_ptMousePosition;
    bool m_bMouseForgotten = false;
    std::vector<ImagePtr> m_vctImages;
    int m_nCurrentIndex = 0;
    /// Guards list and index. Never held while a signal is emitted.
    mutable std::mutex m_mutex;
};
