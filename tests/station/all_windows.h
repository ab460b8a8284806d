// A station as it starts, with what each of its windows needs in order to load.
#pragma once

#include "station/station.h"
#include "tests/support/station.h"

namespace brenvo::station {

class AllWindowsTest : public StationTest {
 protected:
  AllWindowsTest() : StationTest(false) {
    frame = StartStation(session);
    session.Handed.CurrentContest = {"03/03/2001", "  2 m", "Contest", "JN65AA"};
    session.Handed.QueryText = "WHERE Call<>''";
    // The score needs a contact.
    session.Db.Execute(
        "insert into [Contest Qso] (DataContest,Banda,ProgrDato,Call,Locator,Punti,Qrb,Note) "
        "values ('03/03/2001','  2 m',1,'I3XYZ','JN65DF',1,1,'')");
  }
};

}  // namespace brenvo::station
