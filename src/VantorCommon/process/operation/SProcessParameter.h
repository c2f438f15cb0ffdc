// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <QStringList>
#include <QVariant>

/// How a parameter of an operation is edited, and of which type its value is.
enum EProcessParameter {
    EProcessParameter_Choice, ///< combo box; int, the index of the choice
    EProcessParameter_Whole,  ///< spin box; int
    EProcessParameter_Real,   ///< spin box with decimals; double
    EProcessParameter_Text,   ///< line; QString
    EProcessParameter_Folder, ///< file dialog; QString, a path that need not exist
};

/// A parameter of an operation. Made by the functions below. Any thread, one parameter by one thread.
struct VANTORCOMMON_EXPORT SProcessParameter {
    QString strLabel;                                 ///< what people read
    EProcessParameter eKind = EProcessParameter_Text; ///< decides which of the members below count
    QVariant varDefault = QString();                  ///< of the type of the kind
    double dblLeast = 0.0;                            ///< of a number, inclusive
    double dblMost = 0.0;                             ///< of a number, inclusive
    double dblStep = 1.0;                             ///< of the spin box
    QStringList lstChoices;                           ///< in the order of their indices

    /// @{
    /// A parameter of each kind. Choices must not be empty, the first one is the default. The step of a real
    /// number is above 0; one decimal more than it has can be typed.
    static SProcessParameter Choice(const QString& strLabel, const QStringList& lstChoices);
    static SProcessParameter Whole(const QString& strLabel, int nDefault, int nLeast, int nMost);
    static SProcessParameter Real(const QString& strLabel, double dblDefault, double dblLeast, double dblMost,
                                  double dblStep);
    static SProcessParameter Text(const QString& strLabel, const QString& strDefault);
    static SProcessParameter Folder(const QString& strLabel, const QString& strDefault);
    /// @}

    /// The value as the operation gets it, from what an editor or a program gives: a choice by its index or
    /// its text, a number as a number or as text with a decimal point.
    /// @return invalid for what is none of the choices, no number, no whole one, or out of the range
    QVariant Accepted(const QVariant& varValue) const;
    /// An accepted value as people see it: the text of a choice, everything else as it is.
    QVariant Shown(const QVariant& varValue) const;
    /// Why Accepted takes no other value, as a sentence in English.
    QString Refusal() const;
};
