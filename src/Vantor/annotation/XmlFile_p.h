// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/AnnotationFormats_p.h>

#include <QXmlStreamReader>

#include <string>

namespace Vantor::Annotations
{

/// The name of the outermost element, also when only the beginning of the file is there; empty for none.
std::string RootOf(const std::string& bytes);

/// Walks over the elements of a file in XML, within bounds: UTF-8 without a document type (and so without
/// entities of its own), at most 64 attributes an element, 64 levels.
class CXmlFile
{
public:
    /// @param pRoot  name of the outermost element; the reader then stands in it
    CXmlFile(const std::string& bytes, const char* pRoot);

    /// Goes to the next child of the present element, which is the present one then; false when there is
    /// none left: then the parent is. Each child must be left: by walking over its children, by Text or by
    /// Skip.
    bool NextChild();
    void Skip();
    /// The text of the present element, its children's included.
    QString Text();
    /// @{
    /// Of the present element.
    QString Name() const { return m_reader.name().toString(); }
    bool Is(const char* pName) const { return m_reader.name() == QLatin1String(pName); }
    bool Has(const char* pAttribute) const;
    QString Attribute(const char* pName) const; ///< empty when it is missing
    /// The number of an attribute; what is no number gives the other value.
    double Number(const char* pName, double dOtherwise) const;
    int Size(const char* pName, int nOtherwise) const; ///< of an image: whole, not negative
    /// @}
    void Fail(const std::string& reason);
    bool HasFailed() const { return m_reader.hasError(); }
    /// To be asked at the end.
    CResult Result() const;

private:
    QXmlStreamReader m_reader;
};

} // namespace Vantor::Annotations
