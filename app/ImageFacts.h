// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

namespace Vantor::Algorithms
{
class CImage;
}

/// Something that is to be known of an image, as people read it.
struct SFact {
    QString strName;
    QString strValue;
};

/// What is to be known of images and their files. GUI thread.
class ImageFacts
{
    Q_DECLARE_TR_FUNCTIONS(ImageFacts)

public:
    ImageFacts() = delete;

    /// Name, folder, bytes, date and format; only the name and the folder of a file that is gone.
    static QList<SFact> OfFile(const QString& strPath);
    /// Width and height, channels, resolution and size on paper where they are known, and what its file says
    /// in words. Does not wait for a page that has not been rendered.
    static QList<SFact> OfImage(const Vantor::Algorithms::CImage& image);
    /// Of a page of a document, or as its file says; 0 when that is unknown.
    static double DotsPerInch(const Vantor::Algorithms::CImage& image);
};
