// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "LibraryTexts.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <algorithm>
#include <vector>

namespace
{
constexpr const char* kContext = "LibraryTexts";

/// The failures, with the file.
const char* const kFailures[] = {
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot load image %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot load pdf file %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot load all of pdf file %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot save image %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot paste %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot rotate the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot change the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot copy the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot compare the images."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot save table %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Cannot save plot %1."),
};

/// Reasons and notes.
const char* const kSentences[] = {
    QT_TRANSLATE_NOOP("LibraryTexts", "There is no such file."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is not a regular file."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Reading the file is not permitted."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file cannot be opened: %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is empty."),
    QT_TRANSLATE_NOOP("LibraryTexts",
                      "It is not an image in BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM format."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The %1 file is damaged, too large or of an unsupported kind."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The %1 file is too short for the size that it claims."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The BMP file ends before its pixels."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The BMP file ends in its headers, or they are of an unknown kind."),
    QT_TRANSLATE_NOOP("LibraryTexts",
                      "The BMP file is of an unsupported kind: compression %1 with %2 bits per pixel."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The GIF file ends before its first pixel."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The GIF file holds no picture, or ends before the first one."),
    QT_TRANSLATE_NOOP(
        "LibraryTexts",
        "The JPEG file is lossless, hierarchical or of 12 bits, which the library for JPEG lacks."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The TIFF file is compressed by %1, which the library for TIFF lacks."),
    QT_TRANSLATE_NOOP("LibraryTexts", "A GIF image is at most 65535 pixels wide and high."),
    QT_TRANSLATE_NOOP("LibraryTexts", "A BMP file holds at most 4 GiB."),
    QT_TRANSLATE_NOOP("LibraryTexts", "A PGM file holds shades of grey only, and the image has colours."),
    QT_TRANSLATE_NOOP("LibraryTexts",
                      "The colour profile or a text of the file is too long and was not kept."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The image cannot be written as a %1 file: %2."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The image cannot be written as a %1 file."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The picture of the %1 file is empty or larger than the limit."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the copy."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the filter."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the rotated image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory to save the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the changed image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is no image to change."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There are not two images to compare."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The images differ in size: %1 and %2 pixels."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The images differ in the number of channels: %1 and %2."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The images differ in the bits per channel: %1 and %2."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The part to keep has no pixels in the image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The filter cannot be loaded: %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Out of memory."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The rotated image would be too large."),
    QT_TRANSLATE_NOOP("LibraryTexts",
                      "The name must end in bmp, jpg, jpeg, png, tif, tiff, ppm, pgm or gif."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Only images of 8 bits per channel can be saved."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Only images of 8 bits per channel can be filtered."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file or its folder cannot be written."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file could not be written whole."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is missing, no regular file, or must not be read."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The document is too large for the memory."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The document needs a password."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The password is wrong."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is not a PDF document with pages, or it is damaged."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Page %1 of %2 cannot be rendered."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Only the first %1 of %2 pages can be read."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The page is still being rendered."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The page is empty or larger than the limit."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The page cannot be drawn."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the page."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The document could not be opened again."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It took longer than the time limit."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It was cancelled."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The program that reads documents ended unexpectedly."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The program that reads documents gave no valid answer."),
    QT_TRANSLATE_NOOP("LibraryTexts", // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): it is one text
                      "The program vantor-pdf, which reads documents, cannot be started: %1. It "
                      "is in the package vantor-pdf."),
    QT_TRANSLATE_NOOP("LibraryTexts", "No source viewer is chosen."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The source viewer shows no image."),
    QT_TRANSLATE_NOOP("LibraryTexts", "No language was selected."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The OCR engine cannot use the language data."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The region is too large for the OCR engine."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory for the OCR engine."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The OCR engine failed."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is incomplete: %1 of %2 rows are missing or cut short."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is incomplete: %1 pixels of the picture are missing."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is incomplete: the picture is missing from row %1 on."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is incomplete: %1"),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file has a flaw: %1"),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is not a file of annotations."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is not a file of annotations of this format."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is of a later version, which this one cannot read."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It was saved by a later version; this one only shows it."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The annotations are of a later version, which this one cannot save."),
    QT_TRANSLATE_NOOP("LibraryTexts", "\"%1\" is there already and is not overwritten. %2"),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is damaged at byte %1."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is nested too deeply."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file is larger than 64 MiB."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The file cannot be read."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The annotations take more than 64 MiB."),
    QT_TRANSLATE_NOOP("LibraryTexts", "There is not enough memory."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The annotations were made for another version of this picture."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It stays as it is: only the program that made it can scale it."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It stays as it is: scaled it would be too large."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The annotations were changed meanwhile."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Another image is shown by now; the result was dropped."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Another image is shown by now."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The size of a pixel is not a number from 1e-30 to 1e9 units."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The name of the unit has no letters or more than 64 bytes."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The name of the unit holds control characters."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The origin is not a place from -1e9 to 1e9 pixels."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The way has no length."),
    QT_TRANSLATE_NOOP("LibraryTexts",
                      "There are more than %1 components. A larger smallest area leaves some out."),
    QT_TRANSLATE_NOOP("LibraryTexts", "The image does not have that channel."),
    QT_TRANSLATE_NOOP("LibraryTexts", "Open %1"),
    QT_TRANSLATE_NOOP("LibraryTexts", "Save %1"),
    QT_TRANSLATE_NOOP("LibraryTexts", "Export %1"),
    QT_TRANSLATE_NOOP("LibraryTexts", "Rotate"),
    QT_TRANSLATE_NOOP("LibraryTexts", "Change the image"),
    QT_TRANSLATE_NOOP("LibraryTexts", "Compare the images"),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is the first of at least %1 frames."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is the first of %1 frames."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is the first of more than %1 pages."),
    QT_TRANSLATE_NOOP("LibraryTexts", "It is the first of %1 pages."),
};

/// An expression for a whole text, in which "%1" and the like stand for any text.
QRegularExpression ExpressionFor(const char* pEnglish)
{
    QString strPattern = QRegularExpression::escape(QLatin1String(pEnglish));
    strPattern.replace(QRegularExpression(QStringLiteral(R"(\\%\d)")), QStringLiteral("(.+)"));
    return QRegularExpression(QRegularExpression::anchoredPattern(strPattern),
                              QRegularExpression::DotMatchesEverythingOption);
}

/// A table of texts that looks up texts with inserted parts.
class CTable
{
public:
    template <std::size_t n> explicit CTable(const char* const (&arrTexts)[n])
    {
        for (const char* pEnglish : arrTexts)
            m_vctRows.push_back({pEnglish, ExpressionFor(pEnglish)});
    }

    /// The translation; null when the text is not in the table.
    QString Translate(const QString& strText) const
    {
        for (const SRow& row : m_vctRows) {
            const QRegularExpressionMatch match = row.expression.match(strText);
            if (!match.hasMatch())
                continue;
            QString strOwn = QCoreApplication::translate(kContext, row.pEnglish);
            switch (match.lastCapturedIndex()) {
            case 0:
                return strOwn;
            case 1:
                return strOwn.arg(match.captured(1));
            default:
                return strOwn.arg(match.captured(1),
                                  match.captured(2)); // at once, because a name may contain "%2"
            }
        }
        return QString();
    }

private:
    struct SRow {
        const char* pEnglish;
        QRegularExpression expression;
    };
    std::vector<SRow> m_vctRows;
};

const CTable& Failures()
{
    static const CTable table(kFailures);
    return table;
}

const CTable& Sentences()
{
    static const CTable table(kSentences);
    return table;
}

/// A reason of one known sentence or of two. Null for any other.
QString TranslateReason(const QString& strReason)
{
    const QString strBreak = QStringLiteral(". ");
    QString strOwn = Sentences().Translate(strReason);
    for (int i = strReason.indexOf(strBreak); strOwn.isNull() && i >= 0;
         i = strReason.indexOf(strBreak, i + 1)) {
        const QString strFirst = Sentences().Translate(strReason.left(i + 1));
        const QString strSecond = Sentences().Translate(strReason.mid(i + 2));
        if (!strFirst.isNull() && !strSecond.isNull())
            strOwn = strFirst + QLatin1Char(' ') + strSecond;
    }
    return strOwn;
}
} // namespace

QString LibraryTexts::Sentence(const QString& strSentence)
{
    const QString strOwn = Sentences().Translate(strSentence);
    return strOwn.isNull() ? strSentence : strOwn;
}

/// A name may contain anything, even ". ", so this tries every possible boundary between failure and reason,
/// from the front, and takes the longest known reason.
QString LibraryTexts::Failure(const QString& strMessage)
{
    const QString strBreak = QStringLiteral(". ");
    int nLast = -1;
    for (int i = strMessage.indexOf(strBreak); i >= 0; i = strMessage.indexOf(strBreak, i + 1)) {
        const QString strReason = TranslateReason(strMessage.mid(i + 2));
        const QString strFailure =
            strReason.isNull() ? QString() : Failures().Translate(strMessage.left(i + 1));
        if (!strFailure.isNull())
            return strFailure + QLatin1Char(' ') + strReason;
        nLast = i;
    }
    if (nLast < 0)
        return strMessage;
    // For an unknown reason translate only the first half, up to where most reasons of one sentence begin.
    const QString strFailure = Failures().Translate(strMessage.left(nLast + 1));
    return strFailure.isNull() ? strMessage : strFailure + strMessage.mid(nLast + 1);
}
