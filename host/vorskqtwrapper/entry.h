#pragma once

#include <QtGlobal>

extern "C" {

/**
 * The one entry of libvorskqtwrapper.so. Called by the starter plugin on the GUI thread while the
 * application object is being constructed; harmless when called again.
 */
Q_DECL_EXPORT void vorsk_qtwrapper_start();
}
