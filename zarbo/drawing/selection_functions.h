#pragma once

/// Bodies of the functions that give LISP plain lists of entity names: from the host's selection
/// (selection_functions.cpp) and from walks over model space (model_space_walk.cpp).

int ssgetPk();
int ssgetCp();
int ssgetC();
int kvEntsel();

int ssgetXBlock();
int ssgetXCircle();
int ssgetXPolyline();
int ssgetXAll();
