// make-profile: writes a mail profile for trying Tandrel4 out on POSIX.
//
//   make-profile --out DIR [--seed N] [--stores N] [--folders N]
//                [--messages N] [--version TEXT] [--list FILE]
//
// --list writes the profile's folders in the folder list form FolderData
// reads ("-" for the standard output).
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "ProfileGenerator.h"
#include "platform/common/DefaultPorts.h"

int main(int argc, char** argv) {
  t4::platform::UseDefaultPorts();
  t4::tools::ProfileGenerator::Options options;
  std::string out;
  std::string list;
  for (int i = 1; i < argc; ++i) {
    const std::string flag = argv[i];
    if (i + 1 >= argc) {
      std::cerr << "make-profile: " << flag << " needs a value\n";
      return 2;
    }
    const char* value = argv[++i];
    if (flag == "--out") {
      out = value;
    } else if (flag == "--seed") {
      options.seed = std::strtoull(value, nullptr, 10);
    } else if (flag == "--stores") {
      options.stores = std::atoi(value);
    } else if (flag == "--folders") {
      options.folders = std::atoi(value);
    } else if (flag == "--messages") {
      options.messages = std::atoi(value);
    } else if (flag == "--version") {
      options.version = value;
    } else if (flag == "--list") {
      list = value;
    } else {
      std::cerr << "make-profile: unknown option " << flag << "\n";
      return 2;
    }
  }
  if (out.empty()) {
    std::cerr << "usage: make-profile --out DIR [--seed N] [--stores N] [--folders N] "
                 "[--messages N] [--version TEXT] [--list FILE]\n";
    return 2;
  }
  try {
    t4::tools::ProfileGenerator::Write(out, options);
    if (!list.empty()) {
      const std::string text = t4::tools::ProfileGenerator::FolderList(out);
      if (list == "-") {
        std::cout << text;
      } else {
        std::ofstream file(list, std::ios::binary | std::ios::trunc);
        file << text;
        if (!file) throw std::runtime_error("cannot write " + list);
      }
    }
  } catch (const std::exception& e) {
    std::cerr << "make-profile: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
