// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CVObject.h>
#include <Vantor/Export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Vantor::Geometry
{
template <class T> class CPoint;
class CGeometry;
} // namespace Vantor::Geometry

namespace Vantor
{
class CFailureReason;
class CResult;
} // namespace Vantor

/// Images, their files, edits and filters, and reading text.
namespace Vantor::Algorithms
{

class CPixelSource;
struct SImageMetadata;

/// How the samples lie in memory.
enum class EImageType : int {
    /// Interleaved bytes in the order grey | grey, alpha | R, G, B | R, G, B, A.
    Interleaved = 0
};

/// What happens to the canvas when an image is rotated.
enum class ERotationMode : int {
    KeepCanvas = 0, ///< same width and height; the rest is cut off
    GrowCanvas = 1  ///< large enough to hold the whole rotated image
};

/// Which pixels a filter writes. The values are part of the interface.
enum class ERegionMode : int {
    All = 0,    ///< every pixel, whatever the geometry is
    Inside = 1, ///< the pixels of the geometry; without one, every pixel
    Outside = 2 ///< the pixels outside the geometry; without one, none
};

/// A raster image: a contiguous pixel buffer with a table of its rows, a name and a folder.
///
/// Images are held by std::shared_ptr. An image that has been handed to a model is never changed again;
/// whoever wants to change it works on a copy (CopyFrom). No function throws; the int results are 0 on
/// success and non-zero on failure, and a failure leaves the image as it was. Different images may be used
/// on different threads at once; one image may be read by several.
class VANTOR_EXPORT CImage : public CVObject
{
public:
    /// Makes an empty image: no pixels, all sizes 0.
    CImage();
    ~CImage() override;
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    /// Makes a zero-filled image and drops the old pixels; name and folder stay.
    /// @param width, height   1 or more, in pixels
    /// @param channels        1 to 4
    /// @param bitDepth        bits per sample: 8 or 16
    /// @param type            Interleaved
    /// @param rowAlignment    rows start at multiples of this many bytes: 1 to 4096. With two channels the
    ///                        stride is at least 3 bytes per pixel, so that a three-byte view of it is valid.
    /// @return 0, or non-zero for bad sizes or lack of memory
    int Create(int width, int height, int channels, int bitDepth, EImageType type, int rowAlignment);

    /// Copies pixels, name and folder, not the identifier. Fails for null; copying an image to itself does
    /// nothing and returns 0.
    int CopyFrom(const CImage* source);

    /// Makes an image of a size whose pixels come later: 8 bits, rows at multiples of 4 bytes. The first call
    /// that needs them, of any thread, gets them from the source and waits meanwhile; others wait with it.
    /// Then it is an image like all others. Pixels that cannot be made are white, and GetNotes says why. A
    /// thread whose progress is cancelled, or for which there is no memory, gets none: null, or a failure.
    /// Whoever could change the pixels (all that is not const) ends the image's being deferred.
    /// @param width, height, channels  as for Create
    /// @param source                   not null; shared with other images, if it likes
    /// @return 0, or non-zero for bad sizes or no source
    int Defer(int width, int height, int channels, std::shared_ptr<CPixelSource> source);
    /// Whether the pixels come from a source, and nobody can have changed them. Any thread.
    bool IsDeferred() const;
    /// Whether there are pixels that need not be waited for. Any thread.
    bool HasPixels() const;
    /// Gives back the memory of a deferred image until its pixels are needed again, when they are equal.
    /// Pointers into it end, so the caller is the only one that uses the image.
    /// @return whether there was any to give back
    bool DropPixels();

    int GetWidth() const;            ///< pixels, 0 for an empty image
    int GetHeight() const;           ///< rows, 0 for an empty image
    int GetChannel() const;          ///< samples per pixel: 1 to 4, 0 for an empty image
    int GetBitDepth() const;         ///< bits per sample: 8 or 16, 0 for an empty image
    EImageType GetImageType() const; ///< Interleaved
    int GetStride() const;           ///< bytes from one row to the next, 0 for an empty image

    /// @{
    /// The first byte of the buffer (GetStride() * GetHeight() bytes), null for an empty image. Like all
    /// pointers into an image it is valid until the image gets other pixels or is destroyed. Samples of 16
    /// bits have the byte order of the machine.
    unsigned char* GetData();
    const unsigned char* GetData() const;
    /// @}
    /// @{
    /// GetHeight() pointers, one to the start of each row; null for an empty image.
    unsigned char** GetRows();
    const unsigned char* const* GetRows() const;
    /// @}
    /// GetWidth() byte offsets of the pixels from the start of their row; null for an empty image.
    const std::size_t* GetColumnOffsets() const;
    /// @{
    /// The first byte of the pixel (x, y), null outside the image.
    unsigned char* GetPixel(int x, int y);
    const unsigned char* GetPixel(int x, int y) const;
    /// @}

    /// @{
    /// File name, without folder; empty at the start.
    void SetName(const std::wstring& name);
    const std::wstring& GetName() const;
    /// @}
    /// @{
    /// Folder, without a trailing separator unless it is the root; empty if the file was named without one.
    void SetFolder(const std::wstring& folder);
    const std::wstring& GetFolder() const;
    /// @}
    /// @{
    /// The resolution at which a page of a document was made to pixels, in dots per inch; 0 for everything
    /// else, also after Load. CopyFrom copies it, changes of the pixels keep it.
    void SetPageResolution(double dpi);
    double GetPageResolution() const;
    /// @}

    /// Loads the first page or frame of a BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM file (its content
    /// decides, not its suffix; file/ImageFormats.h lists the formats) as 8 bits per channel and sets name
    /// and folder.
    /// - Channels: 1 for grey, 3 for RGB, palettes and CMYK, 4 for whatever has transparency, grey included.
    ///   A BMP file of 256 palette entries of which each is its own grey is grey; other palettes are colours.
    /// - Samples: unsigned v of n bits becomes round(v 255 / (2^n - 1)), signed ones are shifted so that the
    ///   most negative is 0, floats become round(255 v) of v clamped to 0 .. 1, not a number is 0.
    /// - Alpha is straight, premultiplied samples are divided by it. EXIF and TIFF orientations are applied.
    /// - The path is UTF-8 for the system, whatever the locale. Only regular files are opened.
    /// - A transparent PNG colour of 16 bits is compared at 16 bits.
    /// - Load refuses, before it allocates memory, what would decode to more than the limit of
    ///   SetDecodeLimit, to a side beyond 1,000,000, or to more than the length of the file can account for
    ///   (but see JPEG below). The decoder itself may need twice the limit beside the image.
    /// - A truncated file loads partly, with a note, if it is a JPEG, GIF or run-length BMP file; all
    ///   others fail. A JPEG needs the head of its first scan; its missing pixels are grey.
    ///   Pixels that the first frame of a GIF does not cover or lacks are transparent; pixels that run
    ///   lengths skip or lack have the first colour of the palette, or are black without one.
    /// @return 0, or non-zero for a path that names no readable image, one beyond the limits or lack of
    ///         memory; the image then stays
    int Load(const std::wstring& path);
    /// Saves by suffix: bmp, jpg, jpeg (quality 95), png, tif, tiff (LZW), gif (256 colours, exact when there
    /// are no more), ppm, pgm (grey only), in any case; any other suffix fails. 8 bits per channel only; 2
    /// channels are saved as RGBA; JPEG, GIF and PPM drop the alpha. Atomic: after a failure or a kill a file
    /// that stood there before is whole. A symbolic link is followed, the permissions of an old file are
    /// kept.
    /// @return 0, or non-zero for an empty image, 16 bits, an unknown suffix, colours in a PGM file or what
    ///         cannot be written
    int Save(const std::wstring& path) const;

    /// Rotates about a point.
    /// @param centre  in pixels, (0, 0) being the top-left corner of the top-left pixel; at most 2^31 away.
    ///                A canvas that grows fits closely around the rotated image wherever the centre lies.
    ///                Not finite: failure.
    /// @param angle   radians, positive is clockwise on the screen. Multiples of 90 degrees (within 1e-9) are
    ///                exact: the pixels only change places, on a kept canvas to the nearest whole pixel.
    ///                Other angles are bilinear; the pixels whose centre lies in the rotated image are
    ///                covered.
    /// @param fill    value of every byte that the rotated image does not cover, 0 to 255 (rounded, clamped)
    /// @param mode    what happens to the canvas
    /// @return 0, or non-zero for an empty image, a value that is not finite, an unknown mode, a lack of
    ///         memory, or a result that is larger than both the decode limit and the image itself
    int Rotate(const Geometry::CPoint<double>& centre, double angle, double fill, ERotationMode mode);

    /// @{
    /// Changes the whole image, 8 or 16 bits; name, folder and notes stay. Non-zero, with every pixel as
    /// before, for an empty image, a lack of memory, or a crop to no pixel.
    int Crop(int x, int y, int width, int height); ///< keeps the part of the rectangle that is inside
    int FlipHorizontally();                        ///< left becomes right
    int FlipVertically();                          ///< top becomes bottom
    int ToGrey(); ///< 0.299 R + 0.587 G + 0.114 B in one channel; keeps alpha
    /// @}

    /// Replaces every sample of a region by the median of a window around it, in place: buffer and identifier
    /// stay. The window reads the original pixels, also those outside the region; the border of the image is
    /// repeated outwards. Channels are independent; alpha (the last of 2 or 4 channels) stays. From about 4
    /// million pixels on, a second thread helps.
    /// @param radiusX, radiusY  0 or more; the window is 2 radiusX + 1 pixels wide and 2 radiusY + 1
    ///                          pixels high, and its size does not change the time. 0, 0 changes nothing.
    /// @param region            null is the whole image; only read
    /// @param mode              which side of the region is written
    /// @param tolerance         grows the region by that many pixels, or shrinks it when negative: -4096 to
    ///                          4096, 0 is exact
    /// @return 0, also for a region without pixels in the image; non-zero, with every pixel as before, for an
    ///         empty image, samples of 16 bits, a bad argument or lack of memory
    int MedianFilter(int radiusX, int radiusY, const Geometry::CGeometry* region, ERegionMode mode,
                     double tolerance);

    /// @{
    /// Replaces every sample of a region by the strength of its edges, from the Sobel gradients Gx (weights
    /// -1 0 1, -2 0 2, -1 0 1) and Gy (the same, transposed) of the original pixels: min(255, |Gx|),
    /// min(255, |Gy|), and min(255, round(sqrt(Gx^2 + Gy^2))). Everything else as for MedianFilter.
    int SobelX(const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    int SobelY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    int SobelXY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    /// @}

    /// @{
    /// Replaces the colour samples of a region; region, mode, tolerance and failures as for MedianFilter.
    /// Arguments out of range fail. The first filter that smooths loads the module vantor-smooth.so.

    /// v becomes 255 - v.
    int Invert(const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    /// With v from 0 to 1: ((v - 1/2) contrast + 1/2 + brightness), clamped to 0 .. 1, to the power 1 /
    /// gamma; a gamma above 1 lightens dark values. Brightness is -1 to 1, contrast 0 to 10, gamma 0.1 to 10;
    /// 0, 1 and 1 are neutral.
    int AdjustTones(double brightness, double contrast, double gamma, const Geometry::CGeometry* region,
                    ERegionMode mode, double tolerance);
    /// White where the pixel's grey (0.299 R + 0.587 G + 0.114 B) is above the value, 0 to 255, black
    /// elsewhere.
    int Threshold(int value, const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    /// The same with the value that separates the region's greys best (N. Otsu, IEEE Transactions on Systems,
    /// Man and Cybernetics 9, 1979).
    int ThresholdByOtsu(const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    /// White where the pixel's grey is above the mean grey of the window around it, less the offset (-255 to
    /// 255). The window is 2 radius + 1 pixels a side; the radius is 0 to 1000.
    int ThresholdByMean(int radius, double offset, const Geometry::CGeometry* region, ERegionMode mode,
                        double tolerance);
    /// The mean with the weights of a Gaussian, cut off at 3 sigma; within 1 of the exact value. Sigma is 0.1
    /// to 100 pixels.
    int GaussianBlur(double sigma, const Geometry::CGeometry* region, ERegionMode mode, double tolerance);
    /// v + amount (v - blurred v), clamped. Sigma is as above, the amount 0 to 10.
    int UnsharpMask(double sigma, double amount, const Geometry::CGeometry* region, ERegionMode mode,
                    double tolerance);
    /// @}

    /// Why the last call that copies, loads, saves or changes this image failed, as a sentence in English;
    /// empty after a success and before the first of them. Any thread may ask, also while a filter runs.
    std::string GetFailureReason() const;

    /// What a user should know about the pixels that Load made, as plain sentences in English: the file is
    /// incomplete, or it holds more pages or frames than the first. Notes belong to the pixels: CopyFrom
    /// copies them, Rotate keeps them, Create drops them.
    const std::vector<std::string>& GetNotes() const;
    /// Sets them, for whoever makes the pixels, as a CPixelSource.
    void SetNotes(std::vector<std::string> notes);

    /// @{
    /// What the file said beside the pixels; never null. Like the notes it belongs to the pixels: CopyFrom
    /// copies it, changes keep it, Create drops it. A turn by an odd number of quarters exchanges the two
    /// numbers of the resolution; one by a free angle drops a resolution whose numbers differ. Saving writes
    /// the resolution (BMP, JPEG, PNG, TIFF) and a profile for the image's kind of colours (JPEG, PNG, TIFF).
    std::shared_ptr<const SImageMetadata> GetMetadata() const;
    /// Drops what is out of range. @return 0, or non-zero for a lack of memory
    int SetMetadata(const SImageMetadata& metadata);
    /// @}

    /// @{
    /// The largest decoded size in bytes that Load accepts, and that Rotate lets an image grow to, for the
    /// whole process; 1 GiB at the start. Any thread.
    static void SetDecodeLimit(std::size_t bytes);
    static std::size_t GetDecodeLimit();
    /// @}

private:
    CResult TryRotate(const Geometry::CPoint<double>& centre, double angle, double fill, ERotationMode mode);
    /// Gives this image the depth and row alignment of another one and pixels with undefined values.
    int CreateLike(const CImage& model, int width, int height, int channels);

    struct SPixels;
    std::unique_ptr<SPixels> m_pPixels;
    std::unique_ptr<CFailureReason> m_pFailure;
    std::wstring m_strName;
    std::wstring m_strFolder;
    double m_dPageResolution = 0.0;
};

} // namespace Vantor::Algorithms
