#pragma once
// The UI port on real windows: message boxes, sounds, documents and the event
// loop through Qt; the status line, results box, first-cycle question and debug
// log through hooks the windows install.

#include <functional>

#include "session/UiPort.h"

class QWidget;

namespace tarvenix {

class GuiUiPort : public UiPort {
 public:
  struct Hooks {
    std::function<void(const std::string&)> updateStatus;
    std::function<void(const std::string&)> updateTextBox;
    std::function<bool()> resultsTextIsEmpty;
    std::function<std::optional<bool>(const FirstCycleFlags&, bool)> askIgnoreFirstCycleEvents;
    std::function<void(const std::string&)> debugPrint;
  };

  explicit GuiUiPort(QWidget* owner = nullptr) : owner_(owner) {}
  void SetOwner(QWidget* owner) { owner_ = owner; }
  void SetHooks(Hooks hooks) { hooks_ = std::move(hooks); }

  void UpdateStatus(const std::string& sMsg) override;
  void UpdateTextBox(const std::string& sMsg) override;
  bool ResultsTextIsEmpty() const override;
  void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) override;
  bool AskYesNo(const std::string& text, const std::string& title) override;
  std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) override;
  void DebugPrint(const std::string& line) override;
  void PlaySoundFile(const std::string& path) override;
  void DoEvents() override;
  bool OpenDocument(const std::string& path) override;

 private:
  QWidget* owner_;
  Hooks hooks_;
};

}  // namespace tarvenix
