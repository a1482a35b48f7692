#pragma once

/// Bodies of the functions on leaders.

int kvLeaderInsert();
int kvLeaderSetPoints();
int kvLeaderSetBlock();
int kvLeaderSetOffset();
int kvLeaderExplode();
