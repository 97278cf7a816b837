// Carries the precompiled Qt headers; see UicovTargets.cmake.
