// Error: what this system raises. A number for programs and a description for people; raised, never
// returned. RuntimeError and DataError say where it came from.
#pragma once

#include <QString>
#include <exception>
#include <string>

namespace quarv {

class Error : public std::exception {
  public:
    Error(int number, QString description);

    // The subsystem's own number; data-access numbers are signed 32-bit (often negative).
    int Number() const { return number_; }
    // One or more sentences for the user, without prefixes.
    const QString& Description() const { return description_; }
    // Number and description in UTF-8, for logs.
    const char* what() const noexcept override { return what_.c_str(); }

  private:
    int number_;
    QString description_;
    std::string what_;
};

}  // namespace quarv
