#include "analysis/Help.h"

#include "analysis/Utils.h"
#include "app/Session.h"

namespace tarvenix::modHelp {

void ShowHelp(Session& s, UiPort& ui) { modUtils::ShellExec(s, ui, s.sHelpFile); }

}  // namespace tarvenix::modHelp
