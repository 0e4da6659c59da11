#pragma once

/// @file
/// Everything that an application needs.

#include <pelta/Annotations/PgmCircle.h>
#include <pelta/Annotations/PgmIDManager.h>
#include <pelta/Annotations/PgmImage.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Annotations/PgmMarkerOptions.h>
#include <pelta/Annotations/PgmPolygon.h>
#include <pelta/Annotations/PgmPolyline.h>
#include <pelta/Annotations/PgmShape.h>
#include <pelta/Cluster/PgmCluster.h>
#include <pelta/Cluster/PgmClusterAlgorithm.h>
#include <pelta/Cluster/PgmClusterIconGenerator.h>
#include <pelta/Cluster/PgmClusterManager.h>
#include <pelta/Cluster/PgmClusterManagerDelegate.h>
#include <pelta/Cluster/PgmHashable.h>
#include <pelta/Coordinate/GeoTrans.h>
#include <pelta/Coordinate/PgmGridPoint.h>
#include <pelta/Geometry/MapProjection.h>
#include <pelta/Geometry/PgmCameraPosition.h>
#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/Geometry/PgmProjection.h>
#include <pelta/Platform/Application.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/View/DefaultStyle.h>
#include <pelta/View/PgmMapDelegate.h>
#include <pelta/View/PgmMapOptions.h>
#include <pelta/View/PgmMapTypes.h>
#include <pelta/View/PgmMapView.h>
