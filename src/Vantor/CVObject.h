// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

/// The core imaging library libVantor. It knows no widgets, and its headers need nothing but the standard
/// library.
namespace Vantor
{

/// Base of everything that needs an identity: images and drawable objects.
///
/// Every object gets an identifier at construction from one process-wide counter that starts at 1. An
/// identifier is never 0 and never kNoUID, is never used again within a run and is never
/// copied: a copy gets one of its own, an assignment keeps the target's. Any thread may construct objects.
class VANTOR_EXPORT CVObject
{
public:
    /// The identifier of no object.
    static constexpr unsigned int kNoUID = 0xFFFFFFFFu;

    /// Takes the next identifier.
    CVObject();
    /// Takes the next identifier too; nothing of the other object is taken over.
    CVObject(const CVObject& other);
    /// Does nothing: each of the two keeps its identifier.
    CVObject& operator=(const CVObject& other);
    virtual ~CVObject();

    /// The identifier, 1 to 0xFFFFFFFE.
    unsigned int GetUID() const { return m_nUID; }

    /// |a - b| <= 1e-9 max(1, |a|, |b|): absolute near zero, relative for large values. False with a NaN.
    static bool CompareEqual(double a, double b);
    /// The same with 1e-6.
    static bool CompareEqual(float a, float b);

private:
    const unsigned int m_nUID;
};

} // namespace Vantor
