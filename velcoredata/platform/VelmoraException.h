// VelmoraError and VelmoraException: the exception for bad input.
//
// A VelmoraError carries a stable 32-bit id, a symbolic name and a message.
// Errors are made by the generated factories in velcoredata/core/VelErrorsError.h
// (one per id, e.g. VelErrorsError::AutoGen_0x79B9C33C) and thrown as
// VelmoraException. Clone() and Throw() let a host carry an exception across
// a thread or a C boundary and raise it again with its dynamic type intact;
// derived exceptions override both.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/TString.h"

class VELCOREDATA_EXPORT VelmoraError {
 public:
  VelmoraError(uint32_t id, std::string symbolicName, TString message = TString());
  virtual ~VelmoraError();
  VelmoraError(const VelmoraError&) = default;
  VelmoraError& operator=(const VelmoraError&) = default;

  uint32_t GetId() const noexcept { return m_id; }
  const std::string& GetName() const noexcept { return m_name; }
  const TString& GetMessage() const noexcept { return m_message; }

  virtual std::unique_ptr<VelmoraError> Clone() const;
  // Throws VelmoraException carrying a copy of this error.
  [[noreturn]] virtual void Throw() const;

 private:
  uint32_t m_id;
  std::string m_name;
  TString m_message;
};

class VELCOREDATA_EXPORT VelmoraException : public std::exception {
 public:
  explicit VelmoraException(VelmoraError error);
  ~VelmoraException() override;
  VelmoraException(const VelmoraException&) = default;
  VelmoraException& operator=(const VelmoraException&) = default;

  const VelmoraError& GetError() const noexcept { return m_error; }
  uint32_t GetErrorId() const noexcept { return m_error.GetId(); }
  const TString& GetMessage() const noexcept { return m_error.GetMessage(); }

  // "<symbolic name>: <message>" in UTF-8 (just the name when there is no message).
  const char* what() const noexcept override;

  virtual std::unique_ptr<VelmoraException> Clone() const;
  [[noreturn]] virtual void Throw() const;

 private:
  VelmoraError m_error;
  std::string m_what;
};

// "0x" followed by eight upper-case hexadecimal digits: the written form of an error id.
VELCOREDATA_EXPORT std::string FormatErrorId(uint32_t id);
