// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

// Marks what the host libraries define and everybody else imports.
#if defined(VORSK_BUILDS_HOST)
#define VORSK_HOST_EXPORT Q_DECL_EXPORT
#else
#define VORSK_HOST_EXPORT Q_DECL_IMPORT
#endif
