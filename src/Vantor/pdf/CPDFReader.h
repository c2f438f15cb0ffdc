// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <memory>
#include <string>

namespace Vantor::Algorithms
{
class CImage;
}

/// Documents.
namespace Vantor::Utils
{

/// Renders the pages of a PDF document into images. One reader serves one document and one thread at a time;
/// several readers may work on several threads. Nothing throws. The work is done by a process of its own for
/// each reader, the program vantor-pdf, from a Read whose file passes the first checks until the reader's end
/// or its next Read. It is limited in time and memory and may neither write, nor reach the network, nor start
/// programs. What a document does to it costs the page in work; the next page has a fresh process. It ends
/// with the program that uses the library, however that ends. The password is kept in memory as long as the
/// document, for a fresh process, then wiped; it is never logged.
class VANTOR_EXPORT CPDFReader
{
public:
    /// What Read returns.
    enum EReadResult : int {
        EReadResult_OK = 0,              ///< the document is open
        EReadResult_CannotOpen = 1,      ///< missing, no regular file, not readable; no vantor-pdf; Cancel
        EReadResult_NotAPdf = 2,         ///< damaged beyond use, too slow, without pages, another format
        EReadResult_NoMemory = 3,        ///< or the file is larger than the decode limit of CImage
        EReadResult_PasswordRequired = 4 ///< a password is needed, or the one given is wrong
    };

    /// No document is open.
    CPDFReader();
    ~CPDFReader();
    CPDFReader(const CPDFReader&) = delete;
    CPDFReader& operator=(const CPDFReader&) = delete;

    /// Dots per inch, above 0; anything else is ignored. 72 at the start.
    void SetResolutionX(double dpi);
    double GetResolutionX() const; ///< as it is
    /// The same along y. While it is unset, the resolution along x is used.
    void SetResolutionY(double dpi);

    /// The longest time that opening a document, finding a page's size and rendering it may take each. 10 at
    /// the start; what is not above 0 is ignored, and a day is the most.
    /// @param seconds  on the wall
    void SetTimeLimit(double seconds);

    /// Opens a document and closes the previous one, also when it fails.
    /// @param path      UTF-8 for the system, whatever the locale; only regular files are opened
    /// @param password  the user's or the owner's, tried as UTF-8 and as Latin-1; may be empty
    /// @return an EReadResult
    int Read(const std::wstring& path, const std::wstring& password);

    /// Opens the document of another reader for this one, too, whatever has become of its file, and takes
    /// over the resolutions and the time limit. The other one may render meanwhile.
    /// @return an EReadResult: EReadResult_NotAPdf when the other has no document
    int ReadLike(const CPDFReader& other);

    /// The number of pages, 0 without a readable document.
    int GetPageNumber() const;

    /// The size in pixels that RenderPage gives a page (0 is the first).
    /// @return 0, or non-zero for a page that RenderPage would refuse; the sizes are 0 then
    int GetPageSize(int page, int& width, int& height);

    /// Renders the page (0 is the first) on white into 3 channels of 8 bits. Name and folder of the image
    /// stay. A page of w x h points has ceil(w dpi / 72) x ceil(h dpi / 72) pixels. A page whose rendering (4
    /// bytes a pixel) and image (3) together exceed the decode limit of CImage, or with a side above
    /// 1,000,000 pixels, is refused before memory is allocated.
    /// @param page   0 to GetPageNumber() - 1
    /// @param image  receives the page; not owned
    /// @return 0, or non-zero for a page that does not exist or cannot be rendered; the image then stays
    int RenderPage(int page, Algorithms::CImage* image);

    /// Why the last Read, ReadLike, GetPageSize or RenderPage failed: a sentence in English, empty after a
    /// success. Any thread.
    std::string GetFailureReason() const;

    /// Ends the Read or RenderPage in work at once, or the next one if there is none: it fails, as it does
    /// soon after the progress of its thread is cancelled. The document of a RenderPage stays open. Any
    /// thread; the caller sees to it that the reader still exists.
    void Cancel();

private:
    struct SDocument;
    std::unique_ptr<SDocument> m_pDocument;
};

} // namespace Vantor::Utils
