// Holds the single-instance lock of a folder until its standard input closes
// or it is killed, so tests can start a "second copy" of the program.

#include <QCoreApplication>
#include <QLockFile>

#include <cstdio>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc != 2) return 2;
  QLockFile lock(QString::fromLocal8Bit(argv[1]));
  if (!lock.tryLock(0)) return 1;
  std::printf("locked\n");
  std::fflush(stdout);
  std::string line;
  while (std::getline(std::cin, line)) {
  }
  return 0;
}
