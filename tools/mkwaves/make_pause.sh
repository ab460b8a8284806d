#!/bin/sh
# make_pause.sh FILE: a wave file of 0.4 seconds of silence, 16 bits, mono, 22050 a second.
set -eu
{
  # Sizes and rates are little-endian: 17640 bytes of samples (E8 44), and 36 more of heading.
  printf 'RIFF\014\105\000\000WAVEfmt \020\000\000\000\001\000\001\000'
  printf '\042\126\000\000\104\254\000\000\002\000\020\000data\350\104\000\000'
  head -c 17640 /dev/zero
} > "$1"
