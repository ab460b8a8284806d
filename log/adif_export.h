// Contacts for other logging programs.
#pragma once

#include <string>

#include "engine/recordset.h"

namespace brenvo {

// The lines of a record of Log in the ADIF manner, ended by CR LF and closed by "<eor>", in the
// bytes of the file: Windows-1252, so that each length counts characters and bytes alike. A Null
// column has length 0 and an empty value.
std::string AdifContact(Recordset& contact);

}  // namespace brenvo
