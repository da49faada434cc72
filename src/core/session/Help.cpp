#include "session/Help.h"

#include "session/Utils.h"
#include "session/Session.h"

namespace tarvenix::modHelp {

void ShowHelp(Session& s, UiPort& ui) { modUtils::ShellExec(s, ui, s.sHelpFile); }

}  // namespace tarvenix::modHelp
