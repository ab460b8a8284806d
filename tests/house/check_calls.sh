#!/bin/sh
# Proves that the station starts no program and loads no code, and that the network and the serial
# lines have one door each.
# Usage: check_calls.sh SOURCE_DIR
cd "$1" || exit 2
rooms="$(sed -n 's/^ *add_room(\([a-z]*\) .*/\1/p' CMakeLists.txt) app"
failed=0

# refuse WHAT PATTERN [FILE THAT MAY]
refuse() {
  found=$(grep -nE "$2" $(find $rooms -name '*.h' -o -name '*.cpp' | sort) /dev/null |
          { [ -n "${3-}" ] && grep -v "^$3\." || cat; })
  if [ -n "$found" ]; then
    echo "$1:"
    echo "$found"
    failed=1
  fi
}

refuse "a program is started" '\b(system|popen|execl|execlp|execv|execvp|posix_spawnp?|fork) ?\(|QProcess'
refuse "code is loaded" '\bdlopen\b|QLibrary\b|QPluginLoader|enable_load_extension'
refuse "a socket beside the one door" 'QTcpServer|QNetworkAccessManager|\bsocket ?\('
refuse "datagrams beside the one door" 'QUdpSocket' 'ui/qt_udp_socket'
refuse "a connection beside the one door" 'QTcpSocket' 'ui/qt_tcp_client'
refuse "a serial line beside the one door" 'QSerialPort' 'ui/qt_serial_port'
refuse "a password is kept" '[Pp]assword|PASSWORD'
exit $failed
