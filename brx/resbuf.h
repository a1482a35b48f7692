#pragma once

#include "brx/adesk.h"

/// Type words of result buffers that carry LISP values. Words below 5000 are group codes.
enum : int16_t {
  RTNONE = 5000,
  RTREAL = 5001,
  RTPOINT = 5002,
  RTSHORT = 5003,
  RTANG = 5004,
  RTSTR = 5005,
  RTENAME = 5006,
  RTPICKS = 5007,
  RTORINT = 5008,
  RT3DPOINT = 5009,
  RTLONG = 5010,
  RTVOID = 5014,
  RTLB = 5016,
  RTLE = 5017,
  RTDOTE = 5018,
  RTNIL = 5019,
  RTDXF0 = 5020,
  RTT = 5021,
};

/// Results of the host's own calls.
enum : int {
  RTNORM = 5100,
  RTERROR = -5001,
  RTCAN = -5002,
  RTREJ = -5003,
  RTFAIL = -5004,
  RTKWORD = -5005,
};

/// Results of a function that LISP calls.
enum : int { RSRSLT = 1, RSERR = 3 };

struct ads_binary {
  short clen;
  char* buf;
};

/// One value of a linked value list. Strings belong to the buffer; `acutRelRb` frees list and strings.
struct resbuf {
  resbuf* rbnext;
  int16_t restype;
  union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    int16_t rint;
    ACHAR* rstring;
    int64_t rlname[2];
    int32_t rlong;
    int64_t mnInt64;
    ads_binary rbinary;
  } resval;
};
