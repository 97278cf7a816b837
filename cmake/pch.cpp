// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Carries the precompiled Qt headers; see UicovTargets.cmake.
