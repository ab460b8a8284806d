#include "base/system_reason.h"

namespace brenvo::base {
namespace {

struct Reason {
  std::errc code;
  const char* words;
};

constexpr Reason kReasons[] = {
    {std::errc::permission_denied, "permesso negato"},
    {std::errc::operation_not_permitted, "operazione non permessa"},
    {std::errc::read_only_file_system, "il disco è di sola lettura"},
    {std::errc::no_space_on_device, "sul disco non c'è più spazio o non vi stanno altri file"},
    {std::errc::file_too_large, "il file sarebbe troppo grande"},
    {std::errc::io_error, "errore del disco"},
    {std::errc::no_such_file_or_directory, "non esiste"},
    {std::errc::not_a_directory, "una parte del percorso non è una cartella"},
    {std::errc::is_a_directory, "è una cartella"},
    {std::errc::file_exists, "esiste già"},
    {std::errc::directory_not_empty, "la cartella non è vuota"},
    {std::errc::filename_too_long, "nome o percorso troppo lungo"},
    {std::errc::too_many_symbolic_link_levels, "collegamenti che rimandano l'uno all'altro"},
    {std::errc::too_many_files_open, "troppi file aperti"},
    {std::errc::too_many_files_open_in_system, "troppi file aperti"},
    {std::errc::device_or_resource_busy, "in uso da un altro programma"},
    {std::errc::text_file_busy, "in uso da un altro programma"},
};

}  // namespace

std::string ReasonText(const std::error_code& why) {
  for (const Reason& reason : kReasons) {
    if (why == reason.code) return reason.words;
  }
  return why.message();
}

}  // namespace brenvo::base
