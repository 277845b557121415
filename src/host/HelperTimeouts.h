#pragma once

#include <chrono>

// How long the host waits for each thing the helper has to do. All of them must be above 0.
struct HelperTimeouts
{
    std::chrono::milliseconds handshake{5000};   // from the start to READY, connecting and AUTH included
    std::chrono::milliseconds acknowledge{3000}; // from SHOW_MINIBAR to VISIBLE, from HIDE_MINIBAR to HIDDEN
    std::chrono::milliseconds leave{2000};       // from SHUTDOWN or a closed link to the end of the process
    std::chrono::milliseconds terminate{1000};   // from the polite signal to the end of the process
    std::chrono::milliseconds kill{1000};        // from the hard one until the host no longer waits
    std::chrono::milliseconds question{5000};    // between two looks whether a visible bar is still alive
    std::chrono::milliseconds silence{10000}; // a helper that neither answers nor reads for so long is ended
};
