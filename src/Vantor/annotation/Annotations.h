// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Annotations as files keep them: plain values without a display. All texts are UTF-8. Everything here may
/// be used by any thread, one document by one thread at a time, and may throw std::bad_alloc.
namespace Vantor::Annotations
{

/// The look of one annotation, as far as it has one of its own.
struct SStyle {
    std::optional<std::uint32_t> penColor;  ///< 0xAARRGGBB
    double penWidth = 0.0;                  ///< in pixels of the screen; 0: none is given
    std::optional<std::uint32_t> fillColor; ///< 0xAARRGGBB
};

/// One annotation.
///
/// What the numbers mean is the kind's own. Coordinates are pixels of the image, (0, 0) is the outer top-left
/// corner of the top-left pixel, y goes down:
/// - "rectangle", "ellipse": x, y, width, height; the sizes may be negative, as they were drawn. Where the
///   opposite corner is not exactly x + width and y + height in doubles, its x and y follow.
/// - "circle": x and y of the centre, radius
/// - "polygon": x and y of each corner, three at least, the first is not repeated
/// - "ruler", "line", "arrow": x and y of the start and of the end
/// - "point": x, y
/// - "text": x and y of the top-left corner, height of a line
/// - any other kind, such as a host's own: what that kind says
struct SObject {
    std::string id;              ///< a UUID in lower case without braces, kept for life
    std::string kind;            ///< see above; lower case
    std::string name;            ///< what is shown
    bool named = false;          ///< somebody chose the name; otherwise it is made from kind and number
    bool showName = true;        ///< the name stands beside the shape
    bool locked = false;         ///< it cannot be moved, reshaped or deleted by hand
    bool visible = true;         ///< it is painted
    std::vector<double> numbers; ///< finite, |number| <= 1e9
    std::string text;            ///< of a text; empty for other kinds
    SStyle style;                ///< its own look
    std::string extra;           ///< what the host stored with it, a JSON value; empty: nothing
    std::string unknown;         ///< members that this version does not know: a JSON object; empty: none
    /// The whole object as a JSON value when this version cannot read it; everything else is empty then. It
    /// is written back in its place and never painted.
    std::string raw;
};

/// The size of a pixel.
struct SCalibration {
    std::string unit; ///< such as "mm"
    double x = 1.0;   ///< width of a pixel in units, > 0
    double y = 1.0;   ///< height of a pixel in units, > 0
    /// @{
    /// The place that is (0, 0) in units, in pixels of the image; |number| <= 1e9.
    double originX = 0.0;
    double originY = 0.0;
    /// @}
};

/// The annotations of one image or page, with their places on the picture that is in the file, also when they
/// were made while that was shown turned.
struct SPage {
    int page = 0;      ///< index in its file, 0 first
    std::string image; ///< name of the image's file, for sets of images; empty: that of the document's source
    int width = 0;     ///< of the image in pixels; 0: unknown
    int height = 0;    ///< of the image in pixels; 0: unknown
    double dpi = 0.0;  ///< resolution at which a document's page was made to pixels; 0 for images
    std::optional<SCalibration> calibration; ///< none: pixels
    std::vector<SObject> objects;            ///< the topmost first
    std::string unknown;                     ///< as in SObject
};

/// The file that was annotated.
struct SSource {
    std::string name;        ///< of the file, without folders
    std::uint64_t bytes = 0; ///< 0: unknown
    std::string sha256;      ///< 64 digits in lower case; empty: unknown
};

/// The annotations of one file.
struct SDocument {
    static constexpr int kVersion = 1; ///< what this version writes

    int version = kVersion;   ///< of the file that it was read from
    int readableBy = 1;       ///< the oldest version that understands it
    std::string generator;    ///< the program that saved it
    std::string saved;        ///< when, such as "2026-12-01T10:00:00Z"
    SSource source;           ///< what was annotated
    std::vector<SPage> pages; ///< in any order
    std::string unknown;      ///< as in SObject

    /// Whether it comes from a later version, which this one must not write back.
    bool IsReadOnly() const { return readableBy > kVersion; }
};

/// Something that a format could not say, or that was left out of a file when it was read.
struct SRemark {
    std::string object; ///< name of the annotation, or what stands for it, such as "shape 3"; may be empty
    std::string text;   ///< a sentence in English
};

/// How reading or writing went.
struct SReport {
    std::string failure;          ///< a sentence in English; empty for a success
    std::vector<SRemark> remarks; ///< what was lost or left out; none after a failure
    std::string digest = {};      ///< what Save knows the file by; empty if a later version made it
    bool conflict = false;        ///< nothing was saved: another file than the caller knows stands there
};

/// What formats need to know beside the annotations.
struct SContext {
    std::string imageName;   ///< of the image's file, without folders: to formats that name none
    int width = 0;           ///< of the image in pixels: to formats that do not keep it
    int height = 0;          ///< of the image in pixels: to formats that do not keep it
    int firstPixel = 1;      ///< number of the first pixel in Pascal VOC, 0 or 1; no file tells it
    int page = 0;            ///< index in SDocument::pages that formats for one image write
    std::string classes;     ///< names of YOLO's classes, one a line; writing appends new ones
    std::string picture;     ///< the encoded image that SVG embeds; empty: it links to imageName
    std::string pictureType; ///< its MIME type, such as "image/png"
};

/// What there is to know of a format of files of annotations.
struct SFormatInfo {
    std::string name;           ///< as people write it, such as "LabelMe"
    std::string suffix;         ///< of file names: lower case, without a dot; may hold one ("vantor.json")
    bool reads = false;         ///< Read takes it
    bool writes = false;        ///< Write makes it
    bool severalImages = false; ///< a file may be about several images
};

/// The name of our own format.
constexpr const char* kOwnFormat = "Vantor";

/// All formats, our own first.
VANTOR_EXPORT std::vector<SFormatInfo> GetFormats();

/// The name of the format of these bytes of a file; empty when it is none that is read. Formats that have no
/// mark of their own are told by the file's name.
VANTOR_EXPORT std::string FormatOf(const std::string& bytes, const std::string& fileName);

/// Reads annotations.
/// @param bytes     the whole file, at most 64 MiB
/// @param format    a name of GetFormats
/// @param context   what the format needs to know
/// @param document  receives the annotations; is left alone after a failure
/// @return how it went; the remarks tell what was left out
VANTOR_EXPORT SReport Read(const std::string& bytes, const std::string& format, const SContext& context,
                           SDocument& document);

/// Writes annotations.
/// @param document  its numbers are finite, otherwise it is refused
/// @param format    a name of GetFormats
/// @param context   what the format needs to know; YOLO adds to its classes
/// @param bytes     receives the whole file; is left alone after a failure
/// @return how it went; the remarks tell everything that the file does not say
VANTOR_EXPORT SReport Write(const SDocument& document, const std::string& format, SContext& context,
                            std::string& bytes);

/// Reads a file of annotations, at most 64 MiB. YOLO's names are read from "classes.txt" beside it unless the
/// context has some.
/// @param path      of the file, in UTF-8
/// @param format    a name of GetFormats; empty: that of the content
/// @param context   what the format needs to know
/// @param document  receives the annotations; is left alone after a failure
/// @return how it went; the remarks tell what was left out
VANTOR_EXPORT SReport Load(const std::string& path, const std::string& format, SContext context,
                           SDocument& document);
/// Writes a file of annotations in one step, so that after a failure the old one is whole. It refuses to
/// replace a file of our own format that is damaged or from a later version, and in our own format any file
/// that is not of that. YOLO's names are appended to "classes.txt" beside the file; those that stand there
/// keep their place.
/// @param document  see Write
/// @param path      of the file, in UTF-8
/// @param format    a name of GetFormats
/// @param context   what the format needs to know
/// @param known     the digest of the only file that may be replaced, empty for none: any other one there is
///                  a conflict, such as what another program has saved meanwhile; no value: any may be
/// @return how it went; the remarks tell everything that the file does not say
VANTOR_EXPORT SReport Save(const SDocument& document, const std::string& path, const std::string& format,
                           SContext context, const std::optional<std::string>& known = std::nullopt);

/// The file beside an image that keeps its annotations: "photo.jpg" gives "photo.jpg.vantor.json".
VANTOR_EXPORT std::string SidecarOf(const std::string& imagePath);

/// The identity of a file: its name, size and digest. Reads the whole file.
/// @return its digest is empty when the file cannot be read
VANTOR_EXPORT SSource IdentityOf(const std::string& path);
/// Whether a file is another one than that of the identity. Reads the whole file when their sizes are equal.
/// @return false also when one of them is unknown or cannot be read
VANTOR_EXPORT bool IsOther(const SSource& source, const std::string& path);

/// Takes annotations to a copy of their image in another size, so that they mark the same things. A circle
/// stays one: its area grows as that of the image does. Sizes of image and pixel follow.
/// @param page  its annotations and sizes are changed
/// @param x     new width divided by the old one, > 0; nothing is done for other values
/// @param y     new height divided by the old one, > 0
/// @return what stays as it is: annotations that only their program understands, and what would be too large
VANTOR_EXPORT std::vector<SRemark> ScalePage(SPage& page, double x, double y);

} // namespace Vantor::Annotations
