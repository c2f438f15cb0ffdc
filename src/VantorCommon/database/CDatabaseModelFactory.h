// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <memory>

class CDatabaseModel;

/// Makes the records of the tables. It knows the table of settings; a program with further tables derives
/// from it. Used by one thread at a time.
class VANTORCOMMON_EXPORT CDatabaseModelFactory
{
public:
    virtual ~CDatabaseModelFactory();

    /// A fresh record of the table; empty for a table that it does not know.
    virtual std::shared_ptr<CDatabaseModel> Create(const QString& strTable);
};
