// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/database/CDatabaseModelFactory.h>

#include <VantorCommon/database/CDatabaseModelSetting.h>

CDatabaseModelFactory::~CDatabaseModelFactory() = default;

std::shared_ptr<CDatabaseModel> CDatabaseModelFactory::Create(const QString& strTable)
{
    if (strTable == CDatabaseModelSetting::TABLE_NAME)
        return std::make_shared<CDatabaseModelSetting>();
    return {};
}
