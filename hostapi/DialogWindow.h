// The main window of a stand-in host on a system without windows of its own. The platform data
// of the main window is a pointer to this record there; whoever wants to show the options dialog
// fills in texts and states and calls `run`, which answers for the user.
#pragma once

#include "hostapi/scalars.h"

inline constexpr A_u_long kStandinDialogMagic = 0x57444953;  // "SIDW" in memory

enum : A_long {
    kStandinDialogClose = 2,
    kStandinDialogFirstButton = 1010,
    kStandinDialogSecondButton = 1012,
    kStandinDialogGroupBox = 1015,
};

struct StandinDialogControl {
    A_long id;
    A_Boolean enabled;
    A_char text[256];  // as the module gives it, zero-terminated, in whatever code page
};

// Owner: the host; valid as long as the command that asked for it. The module may write title and
// controls, and nothing else.
struct StandinDialogWindow {
    A_u_long magic;  // kStandinDialogMagic: tells this record from a real window
    A_char title[64];
    StandinDialogControl groupBox;
    StandinDialogControl firstButton;
    StandinDialogControl secondButton;
    // Modal. The control id that the user left the dialog by: one of the two buttons or close.
    // A disabled button is never answered.
    A_long (*run)(StandinDialogWindow* window);
    void* host;  // the host's own
};
