// What is behind each address; the table of them is in Panel.cpp. `name` is the one in the address:
// a page's, or a render's. All throw Refusal and Failure.
#pragma once

#include "Panel.h"

namespace tool::panel {

// AboutHandlers.cpp
Answer tellAbout(PanelParts& parts, const Ask& ask, const std::string& name);
Answer tellParams(PanelParts& parts, const Ask& ask, const std::string& name);
Answer tellLooks(PanelParts& parts, const Ask& ask, const std::string& name);
Answer tellThrows(PanelParts& parts, const Ask& ask, const std::string& name);

// PageHandlers.cpp
Answer openPage(PanelParts& parts, const Ask& ask, const std::string& name);
Answer showPage(PanelParts& parts, const Ask& ask, const std::string& name);
Answer closePage(PanelParts& parts, const Ask& ask, const std::string& name);
Answer changeValue(PanelParts& parts, const Ask& ask, const std::string& name);
Answer putState(PanelParts& parts, const Ask& ask, const std::string& name);
Answer putLook(PanelParts& parts, const Ask& ask, const std::string& name);
Answer sendPicture(PanelParts& parts, const Ask& ask, const std::string& name);

// AwayHandlers.cpp
Answer sendLook(PanelParts& parts, const Ask& ask, const std::string& name);
Answer tellCommand(PanelParts& parts, const Ask& ask, const std::string& name);
Answer startRender(PanelParts& parts, const Ask& ask, const std::string& name);
Answer tellRender(PanelParts& parts, const Ask& ask, const std::string& name);
Answer stopRender(PanelParts& parts, const Ask& ask, const std::string& name);
Answer changeDefaults(PanelParts& parts, const Ask& ask, const std::string& name);

}  // namespace tool::panel
