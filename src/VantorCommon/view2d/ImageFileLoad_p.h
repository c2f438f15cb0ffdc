// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

/// Reads files into images, on any thread; what is to be said of it, the caller says.
namespace ImageFileLoad
{
enum EReader {
    EReader_Path,    ///< of documents for a path that looks like one
    EReader_Content, ///< of documents for a file that begins as one; by the path where it cannot be read
    EReader_Image,
    EReader_Document
};

/// What to read, and how.
struct SRequest {
    QString strPath;
    QString strPasted; ///< how the clipboard names the file, if it is pasted: its failure is not logged
    EReader eReader = EReader_Path;
    double dblResolutionX = 0.0; ///< of documents, in dots per inch
    double dblResolutionY = 0.0; ///< the same
    QString strPassword;
    bool bPasswordGiven = false;
    bool bDeferred = false; ///< the pages of a document come without pixels
};

/// What came of it.
struct SLoaded {
    std::vector<std::shared_ptr<Vantor::Algorithms::CImage>> vctImages; ///< up to the first failure
    bool bNeedsPassword = false;                                        ///< and none was given
    QString strLog;                                                     ///< an error for the log, or empty
    QString strFailure; ///< why not everything was read, a line in English, or empty
};

/// Told the number of pages, and then of each how many are done. Not told of deferred ones.
using Pages = std::function<void(int nDone, int nPages)>;

SLoaded Load(const SRequest& request, const Pages& pages);

/// The memory in bytes that Load will take, as the header of the file tells; 0: little, or nobody knows
/// before, as for a document.
qint64 MemoryFor(const SRequest& request);
} // namespace ImageFileLoad
