#pragma once

/// Bodies that open the dialogs over the standards data.

int kvCustomizeLayers();
int kvLayerSystemOptionsElec();
int kvLayerSystemOptionsPlumb();
int kvLayerSystemOptionsHvac();
int kvCustomizeTextStyles();
int kvCustomizeLabelGroup();
