#pragma once
// The debug log window: the trace lines of reading and analysis in debug mode,
// with Clear, Print, Save and Close. Closing it throws the log away.

#include <QWidget>

#include <string>

class QPlainTextEdit;
class QPushButton;

namespace tarvenix {

struct Session;
class UiPort;

class frmDebug : public QWidget {
  Q_OBJECT
 public:
  frmDebug(Session& session, UiPort& ui, QWidget* parent = nullptr);

  // Appends a line break and sMsg, and shows the newest line.
  void UpdateText(const std::string& sMsg);
  std::string Text() const;
  QPlainTextEdit* TextBox() const { return TextBox1_; }

  void Clear();
  void SaveLog();
  void PrintLog();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  Session& session_;
  UiPort& ui_;
  QPlainTextEdit* TextBox1_;
};

// Shows the log window (making it when needed) and appends the line.
void DebugPrintTo(frmDebug& window, const std::string& line);

}  // namespace tarvenix
