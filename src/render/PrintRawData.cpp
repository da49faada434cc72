#include "PrintRawData.h"

#include <QFont>
#include <QPrinter>
#include <QStringList>
#include <QTemporaryDir>

#include "session/FileUtils.h"
#include "analysis/Report.h"
#include "QtStrings.h"
#include "TextPrinting.h"
#include "session/Utils.h"
#include "session/Session.h"

namespace tarvenix::modTarvenix {
namespace {

// The report through the scratch file, one printed line per list item.
QStringList ReportItems(Session& s, UiPort& ui, int16_t& iErr) {
  QTemporaryDir folder;
  if (!folder.isValid()) Raise(err::kPathNotFound);
  const std::string scratch = modUtils::JoinPath(folder.path().toStdString(), kScratchFileName);
  SaveRawData(s, ui, scratch, iErr);
  if (iErr != 0) return {};
  QStringList items;
  auto file = modUtils::VbFile::Open(modUtils::FileMode::Input, scratch);
  while (!file->Eof()) items << ToQt(file->InputItem());
  file->Close();
  return items;  // the folder and the scratch file go with `folder`
}

}  // namespace

QStringList RawDataLines(Session& s, UiPort& ui, const std::string& sText, int16_t& iErr) {
  if (sText.empty()) return ReportItems(s, ui, iErr);
  return ToQt(sText).split(QLatin1Char('\n'));
}

void PrintRawData(Session& s, UiPort& ui, QPrinter& printer, const std::string& sText, int16_t iCopies,
                  int16_t& iErr) {
  iErr = 0;
  int16_t saveErr = 0;
  const bool ok = modUtils::Trapped(s, ui, "modTarvenix.PrintRawData", [&] {
    QStringList lines = RawDataLines(s, ui, sText, saveErr);
    if (saveErr != 0) return;
    if (!gui::PrintLines(printer, lines, QFont(QStringLiteral("courier new"), 11), iCopies))
      Raise(err::kDeviceIO);
  });
  if (!ok || saveErr != 0) iErr = 1;
}

}  // namespace tarvenix::modTarvenix
