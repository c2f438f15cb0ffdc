// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/AnnotationFormats_p.h>

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <string>
#include <unordered_set>

/// What the readers and writers of other programs' files share.
namespace Vantor::Annotations
{

/// Takes what a reader finds, within the bounds that hold for any file: kMaxObjects, kMaxNumbers, kMaxText,
/// |coordinate| <= kMaxCoordinate.
class CForeignReading
{
public:
    /// @param document  outlives this
    /// @param remarks   outlives this
    CForeignReading(SDocument& document, Remarks& remarks);

    /// Begins a page, to which what is taken from now on belongs.
    void BeginPage(SPage page);
    /// The page with that index in its file; it begins when there is none yet. Sizes and names are the
    /// context's.
    void GoToPage(int nPage, const SContext& context);
    /// Takes the next annotation, which lies over those before it. It gets an identifier; its name counts as
    /// given. One that is not well formed is left out with a remark.
    void Take(SObject object);
    /// Remarks that something was left out.
    /// @param name  empty: "annotation N" stands for it
    void Skip(const std::string& name, const std::string& why);
    /// There is more than any file may hold: the reader may stop.
    bool IsFull() const { return m_bFull; }
    /// Ends all: the topmost come first from now on.
    CResult Finish();

private:
    std::string NameOr(const std::string& name) const;

    SDocument& m_document;
    Remarks& m_remarks;
    std::size_t m_nPage = 0; ///< index of the present page
    std::size_t m_nFound = 0;
    std::unordered_set<std::string> m_ids;
    std::size_t m_nNumbers = 0;
    bool m_bFull = false;
};

/// What a format keeps of an annotation beside its kind, place and name.
enum EKeeps : unsigned {
    Keeps_Nothing = 0,
    Keeps_ShowName = 1U << 0,
    Keeps_Lock = 1U << 1,
    Keeps_Visible = 1U << 2,
    Keeps_PenColor = 1U << 3,
    Keeps_PenWidth = 1U << 4,
    Keeps_FillColor = 1U << 5,
    Keeps_Extra = 1U << 6,
    Keeps_Unknown = 1U << 7,
    Keeps_All = (1U << 8) - 1
};

/// Whether an annotation can be written by a format that has these kinds; remarks it when not.
/// @param kinds  with blanks around each, such as " rectangle point "
bool CanBeWritten(const SObject& object, const std::string& kinds, Remarks& remarks);
/// Remarks that an annotation becomes one of another kind.
void TellKind(const SObject& object, const std::string& kind, Remarks& remarks);
/// Remarks in one sentence what of the annotation a format does not keep.
/// @param keeps  values of EKeeps
void TellLosses(const SObject& object, unsigned keeps, Remarks& remarks);
/// Remarks what of the document and of the page is not kept: calibration, resolution, turns, and members
/// that this version does not know.
void TellPageLosses(const SDocument& document, const SPage& page, Remarks& remarks);
/// Remarks the other pages, of which nothing is written.
void TellOtherPages(const SDocument& document, const SPage& written, Remarks& remarks);
/// Remarks that the coordinates that the file gives back are not those of the annotation.
/// @param read  of the kind that is read back
void TellRounding(const SObject& object, const SObject& read, Remarks& remarks);
/// The page that formats for one image write; an empty one when there is none.
const SPage& PageToWrite(const SDocument& document, const SContext& context);
/// The size of the image: the page's, or the context's where the page knows none. 0: unknown.
/// @{
int WidthOf(const SPage& page, const SContext& context);
int HeightOf(const SPage& page, const SContext& context);
/// @}
/// The name of the page's image.
std::string ImageNameOf(const SDocument& document, const SPage& page, const SContext& context);

/// @{
/// Numbers as text: the shortest that reads back as the same number, with a dot whatever the locale. Reading
/// takes finite numbers up to kMaxCoordinate only.
QByteArray NumberText(double dNumber);
bool ReadNumber(const QString& text, double& dNumber);
/// @}
/// All numbers of a text, which stand apart by blanks or commas; empty when one of them is none.
std::vector<double> ReadNumbers(const QString& text);

/// A text without the characters that XML cannot say: those below a blank bar tab and ends of lines, halves
/// of pairs, and the two that are no characters.
QString XmlText(const std::string& text);
/// Remarks that XmlText changes the name.
void TellXmlName(const SObject& object, Remarks& remarks);

} // namespace Vantor::Annotations
