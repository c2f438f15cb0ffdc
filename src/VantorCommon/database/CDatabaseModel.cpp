// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/database/CDatabaseModel.h>

const QString CDatabaseModel::COLUMN_ID = QStringLiteral("ID");

CDatabaseModel::~CDatabaseModel() = default;
