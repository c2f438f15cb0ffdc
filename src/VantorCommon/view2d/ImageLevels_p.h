// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QImage>
#include <QObject>
#include <memory>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

/// Smaller and smaller versions of an image, each of half the width and height of the one before it and each
/// pixel the rounded mean of four; together at most a third of the image's memory.
///
/// The views that show an image share its levels by Of; with the last of them the levels go. GUI thread.
class CImageLevels : public QObject
{
    Q_OBJECT

public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Those of an image, which are empty at first.
    static std::shared_ptr<CImageLevels> Of(const ImagePtr& pImage);
    ~CImageLevels() override;

    /// Begins to make them in the background, the first time. Makes none when memory is short.
    /// @param image  over the pixels of the image
    void Make(const QImage& image);
    /// A version of 1 / 2^nLevel of the image's width and height; nLevel is 1 or more, and becomes that of
    /// the smallest one if there is no such. Null while there is none.
    const QImage* Get(int& nLevel) const;

Q_SIGNALS:
    void signal_Made(); ///< they have been made

private:
    explicit CImageLevels(const ImagePtr& pImage);

    const ImagePtr m_pImage;
    std::vector<QImage> m_vctLevels;
    bool m_bAsked = false;
};
