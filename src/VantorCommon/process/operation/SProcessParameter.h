// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <QStringList>
#include <QVariant>

/// The editor of an operation's parameter, and the type of its value.
enum EProcessParameter {
    EProcessParameter_Choice, ///< combo box; int, the index of the choice
    EProcessParameter_Whole,  ///< spin box; int
    EProcessParameter_Real,   ///< spin box with decimals; double
    EProcessParameter_Text,   ///< line; QString
    EProcessParameter_Folder, ///< file dialog; QString, a path that need not exist
};

/// A parameter of an operation, made by the functions below. Any thread, one thread at a time for each.
struct VANTORCOMMON_EXPORT SProcessParameter {
    QString strLabel;                                 ///< the text that users read
    EProcessParameter eKind = EProcessParameter_Text; ///< decides which of the members below apply
    QVariant varDefault = QString();                  ///< of the type of the kind
    double dblLeast = 0.0;                            ///< of a number, inclusive
    double dblMost = 0.0;                             ///< of a number, inclusive
    double dblStep = 1.0;                             ///< of the spin box
    QStringList lstChoices;                           ///< in the order of their indices

    /// @{
    /// Make a parameter of each kind. Choices must not be empty; the first is the default. The step of a real
    /// number is above 0; the user can type one decimal more than the step has.
    static SProcessParameter Choice(const QString& strLabel, const QStringList& lstChoices);
    static SProcessParameter Whole(const QString& strLabel, int nDefault, int nLeast, int nMost);
    static SProcessParameter Real(const QString& strLabel, double dblDefault, double dblLeast, double dblMost,
                                  double dblStep);
    static SProcessParameter Text(const QString& strLabel, const QString& strDefault);
    static SProcessParameter Folder(const QString& strLabel, const QString& strDefault);
    /// @}

    /// The value that the operation gets for the value of an editor or a program: a choice by its index or
    /// its text, a number as a number or as text with a decimal point.
    /// @return invalid for anything that is not one of the choices, not a number, not a whole number, or out
    ///         of the range
    QVariant Accepted(const QVariant& varValue) const;
    /// An accepted value as users see it: the text of a choice, any other value unchanged.
    QVariant Shown(const QVariant& varValue) const;
    /// Why Accepted refuses a value, as a sentence in English.
    QString Refusal() const;
};
