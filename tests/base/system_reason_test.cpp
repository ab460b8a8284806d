#include "base/system_reason.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace brenvo::base {
namespace {

TEST(SystemReason, WhatAnOperatorMayMeetIsToldInItalian) {
  const auto told = [](int error) { return ReasonText({error, std::generic_category()}); };
  EXPECT_EQ(told(EACCES), "permesso negato");
  EXPECT_EQ(told(ENOSPC), "sul disco non c'è più spazio o non vi stanno altri file");
  EXPECT_EQ(told(EROFS), "il disco è di sola lettura");
  EXPECT_EQ(told(ELOOP), "collegamenti che rimandano l'uno all'altro");
  EXPECT_EQ(told(ENAMETOOLONG), "nome o percorso troppo lungo");
}

TEST(SystemReason, WhatTheSystemItselfSaysIsToldAlike) {
  std::error_code error;
  std::filesystem::create_directory("/dev/null/directory", error);
  EXPECT_EQ(ReasonText(error), "una parte del percorso non è una cartella");
}

TEST(SystemReason, AnUnknownReasonKeepsItsOwnWords) {
  const std::error_code unknown(ERANGE, std::generic_category());
  EXPECT_EQ(ReasonText(unknown), unknown.message());
}

}  // namespace
}  // namespace brenvo::base
