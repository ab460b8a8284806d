# The points of a contest from paper, a line a contact: band, serial, call, locator. The first one with
# a station on a band counts its kilometres between the middles of the locators, no part of one, and
# one more. `own` is the own locator.
function sine(x) { return sin(x * pi / 180) }
function cosine(x) { return cos(x * pi / 180) }
function longitude(l) {
  return index(letters, substr(l, 1, 1)) * 20 - 20 + substr(l, 3, 1) * 2 + \
         (index(letters, substr(l, 5, 1)) - 0.5) / 12 - 180
}
function latitude(l) {
  return index(letters, substr(l, 2, 1)) * 10 - 10 + substr(l, 4, 1) + \
         (index(letters, substr(l, 6, 1)) - 0.5) / 24 - 90
}
BEGIN {
  pi = atan2(0, -1)
  letters = "ABCDEFGHIJKLMNOPQRSTUVWX"
}
!(($1, $3) in seen) {
  seen[$1, $3] = 1
  c = sine(latitude(own)) * sine(latitude($4)) + \
      cosine(latitude(own)) * cosine(latitude($4)) * cosine(longitude(own) - longitude($4))
  if (c > 1) c = 1
  sum += int(111.2 * atan2(sqrt(1 - c * c), c) * 180 / pi) + 1
}
END { print sum + 0 }
