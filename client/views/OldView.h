#pragma once

class CameraList;
class ViewList;

/// Takes over the one view that clients kept in their settings before views had names, where there are no
/// views yet.
void takeOldView(ViewList* views, const CameraList& cameras);
