#include "QtStrings.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringDecoder>

namespace tarvenix {

QString ToQt(const std::string& text) {
  // Bytes that form valid UTF-8 are practically never meant as Latin-1, so
  // they are read as UTF-8.
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString s = utf8(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  if (utf8.hasError()) s = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  // Message texts join their lines with a lone CR; Qt wants line feeds.
  s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  s.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return s;
}

std::string FromQt(const QString& text) {
  QByteArray bytes = text.toLatin1();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

QString PathToQt(const std::string& path) { return QDir::toNativeSeparators(QFile::decodeName(path.c_str())); }

std::string PathFromQt(const QString& path) { return QFile::encodeName(QDir::toNativeSeparators(path)).toStdString(); }

}  // namespace tarvenix
