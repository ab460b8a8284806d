# A contact of a contest by its number n: call, serial, locator.
BEGIN {
  split("DL OK S5 OE HB9 I F SP 9A OM", prefix, " ")
  letters = "ABCDEFGHIJKLMNOPQRSTUVWX"
  p = prefix[n % 10 + 1]
  call = p (p ~ /[0-9]$/ ? "" : int(n / 7) % 9 + 1) substr(letters, int(n / 24) % 24 + 1, 1) \
         substr(letters, n % 24 + 1, 1) substr(letters, int(n / 10) % 24 + 1, 1)
  print call, n % 400 + 1, (n % 3 ? "JN" : "JO") (n * 7) % 10 (n * 3) % 10 \
        substr(letters, (n * 5) % 24 + 1, 1) substr(letters, (n * 11) % 24 + 1, 1)
}
