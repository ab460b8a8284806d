#!/bin/sh
# Proves that the station loads no code, and that other programs, the network and the serial lines
# have one door each, through which no shell is started and none but the programs named here.
# Usage: check_calls.sh SOURCE_DIR
cd "$1" || exit 2
rooms="$(sed -n 's/^ *add_room(\([a-z]*\) .*/\1/p' CMakeLists.txt) app"
failed=0

# refuse WHAT PATTERN [FILE THAT MAY]
refuse() {
  found=$(grep -nE "$2" $(find $rooms -name '*.h' -o -name '*.cpp' | sort) /dev/null |
          { [ -n "${3-}" ] && grep -vE "^$3\." || cat; })
  if [ -n "$found" ]; then
    echo "$1:"
    echo "$found"
    failed=1
  fi
}

refuse "a program is started" '\b(system|popen|execl|execlp|execv|execvp|posix_spawnp?|fork) ?\('
refuse "a program is started beside the one door" 'QProcess' 'ui/qt_process'
refuse "a shell is started" 'startCommand|startDetached|/bin/(ba)?sh|"(ba)?sh"'
refuse "programs beside those that lead a transceiver or a rotator, and sign contacts" 'MakeProcess\(\)' '(rig/[a-z_]+|conferme/sending|platform/include/platform/platform|recorder/include/recorder/recording_platform|ui/(include/ui/)?qt_platform)'
refuse "code is loaded" '\bdlopen\b|QLibrary\b|QPluginLoader|enable_load_extension'
refuse "a socket beside the one door" '\bsocket ?\('
refuse "a question to the net beside the one door" 'QNetworkAccessManager' 'ui/qt_web_client'
refuse "questions to the net beside those to the services of confirmations" 'MakeWebClient\(\)' '(conferme/(down|up)load|platform/include/platform/platform|recorder/include/recorder/recording_platform|ui/(include/ui/)?qt_platform)'
refuse "a certificate is passed over" 'ignoreSslErrors|setPeerVerifyMode|VerifyNone'
refuse "a server beside the one door" 'QTcpServer' 'ui/qt_tcp_server'
refuse "datagrams beside the one door" 'QUdpSocket' 'ui/qt_udp_socket'
refuse "a connection beside the one door" 'QTcpSocket' 'ui/qt_tcp_(client|server)'
refuse "a serial line beside the one door" 'QSerialPort' 'ui/qt_serial_port'
# What services call theirs, and write of a wrong one, is known there; the desktop keeps it.
refuse "a password is kept" '[Pp]assword|PASSWORD' '(conferme/(report|questions)|ui/(qt_keyring|secret_prompt))'
refuse "a secret is kept beside the one door" 'QKeychain' 'ui/qt_keyring'
exit $failed
