#include "velcoredata/platform/VelmoraException.h"

#include <cstdio>
#include <utility>

VelmoraError::VelmoraError(uint32_t id, std::string symbolicName, TString message)
    : m_id(id), m_name(std::move(symbolicName)), m_message(std::move(message)) {}

VelmoraError::~VelmoraError() = default;

std::unique_ptr<VelmoraError> VelmoraError::Clone() const { return std::make_unique<VelmoraError>(*this); }

void VelmoraError::Throw() const { throw VelmoraException(*this); }

VelmoraException::VelmoraException(VelmoraError error) : m_error(std::move(error)) {
  m_what = m_error.GetName();
  if (!m_error.GetMessage().isEmpty()) m_what += ": " + m_error.GetMessage().toUtf8();
}

VelmoraException::~VelmoraException() = default;

const char* VelmoraException::what() const noexcept { return m_what.c_str(); }

std::unique_ptr<VelmoraException> VelmoraException::Clone() const {
  return std::make_unique<VelmoraException>(*this);
}

void VelmoraException::Throw() const { throw *this; }

std::string FormatErrorId(uint32_t id) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", id);
  return buffer;
}
