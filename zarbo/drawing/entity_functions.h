#pragma once

/// Bodies of the functions that hand single operations of the host's entities to LISP.

// curve_functions.cpp
int curveGetLength();
int curveGetPointAtDist();
int curveGetClosestPointTo();
int curveGetDistAtPoint();

// mtext_functions.cpp
int mtextActualWidth();
int mtextActualHeight();
int mtextAscent();
int mtextDescent();
int mtextDirection();
int mtextSetNormal();
int mtextSetDirection();
int mtextSetMask();
int mtextInsert();
// last_line_width.cpp
int mtextLastLineWidth();

// group_functions.cpp
int kvSetGroupSelectable();
int kvGetGroup();

// layer_functions.cpp
int kvSetPlotStyle();
int kvFreezeInViewport();

// entity_functions.cpp
int leaderCreate();
int kvSetColor();
int entitySetColor();
int entityGetGeomExtents();
int faceMakeEdgeInvisibleAt();
int polyline2dSetCurveType();
int kvSendToBack();
