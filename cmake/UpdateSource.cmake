# Where a build looks for updates of itself, and the key that it accepts them by. Without an address it looks
# nowhere; without a key it accepts none.
set(QUIREVAULT_UPDATE_FEED_URL "" CACHE STRING "Address of the update feed (https)")
set(QUIREVAULT_UPDATE_PUBLIC_KEY "" CACHE STRING "Ed25519 public key of the releases, 32 bytes in base64")

if(NOT QUIREVAULT_UPDATE_FEED_URL MATCHES "^(https://[^ \"\\;]+)?$")
  message(FATAL_ERROR "QUIREVAULT_UPDATE_FEED_URL is no https address: ${QUIREVAULT_UPDATE_FEED_URL}")
endif()
if(NOT QUIREVAULT_UPDATE_PUBLIC_KEY MATCHES "^([A-Za-z0-9+/]+=)?$")
  message(FATAL_ERROR "QUIREVAULT_UPDATE_PUBLIC_KEY is no key in base64: ${QUIREVAULT_UPDATE_PUBLIC_KEY}")
endif()
string(LENGTH "${QUIREVAULT_UPDATE_PUBLIC_KEY}" key_length)
if(NOT key_length EQUAL 0 AND NOT key_length EQUAL 44)
  message(FATAL_ERROR "QUIREVAULT_UPDATE_PUBLIC_KEY must have 32 bytes, in base64 44 characters")
endif()
