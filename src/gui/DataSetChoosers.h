#pragma once
// The two small choosers that pick a data set from the list "1 - A", "2 - B",
// ...: one for viewing a data set's file, one for editing a data set.

#include <QDialog>

class QComboBox;
class QLabel;

namespace tarvenix {

class App;

class DataSetChooser : public QDialog {
  Q_OBJECT
 public:
  // Fills the list and shows the chooser modally.
  int ShowModal();
  // Activation: the list n - ID for every loaded data set, the last preselected.
  void Activate();
  QComboBox* List() const { return list_; }

 protected:
  DataSetChooser(App& app, QWidget* parent, const char* objectName, const char* caption, const char* prompt);
  virtual void Ok() = 0;
  virtual void Cancel() = 0;
  void reject() override { Cancel(); }
  // The data set picked in the list becomes current.
  void MakeSelectionCurrent();

  App& app_;

 private:
  QComboBox* list_;
};

class frmTarvenixSelectDataSet : public DataSetChooser {
  Q_OBJECT
 public:
  frmTarvenixSelectDataSet(App& app, QWidget* parent);
  // True when the last use ended with Cancel.
  bool Canceled() const { return canceled_; }

 protected:
  void Ok() override;
  void Cancel() override;

 private:
  bool canceled_ = false;
};

class frmTarvenixEdit : public DataSetChooser {
  Q_OBJECT
 public:
  frmTarvenixEdit(App& app, QWidget* parent);

 protected:
  void Ok() override;  // opens the setup dialog for the chosen data set
  void Cancel() override;
};

}  // namespace tarvenix
