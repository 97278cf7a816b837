#include "vorskqtwrapper/entry.h"

#include "vorskqtwrapper/wrapper.h"

void vorsk_qtwrapper_start() {
    VorskHost::Wrapper::start();
}
