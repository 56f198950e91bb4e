// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// The names of elements and attributes, in the order in which documents have them.
namespace qx::names {

using Name = const char16_t*;

inline constexpr Name Top = u"qxdraw";
inline constexpr Name Version = u"version";
inline constexpr Name Id = u"id";
inline constexpr Name Type = u"type";
inline constexpr Name Value = u"value";
inline constexpr Name ObjectName = u"name";
inline constexpr Name More = u"more";

inline constexpr Name Resources = u"resources";
inline constexpr Name Shapes = u"shapes";
inline constexpr Name RectangleShape = u"rectangleShape";
inline constexpr Name OvalShape = u"ovalShape";
inline constexpr Name PolygonShape = u"polygonShape";
inline constexpr Name InnerRect = u"innerRect";
inline constexpr Name Point = u"point";
inline constexpr Name Shape = u"shape";
inline constexpr Name Resource = u"resource";

inline constexpr Name Instances = u"instances";
inline constexpr Name Graph = u"graph";
inline constexpr Name Intergraph = u"intergraph";
inline constexpr Name Node = u"node";
inline constexpr Name Edge = u"edge";
inline constexpr Name Source = u"source";
inline constexpr Name Target = u"target";
inline constexpr Name ChildGraph = u"childGraph";
inline constexpr Name RootGraph = u"rootGraph";

inline constexpr Name MinimumMarginWidth = u"minimumMarginWidth";
inline constexpr Name MinimumMarginHeight = u"minimumMarginHeight";
inline constexpr Name OrthogonalRouting = u"orthogonalRouting";
inline constexpr Name Margins = u"margins";
inline constexpr Name Proportional = u"proportional";
inline constexpr Name Constant = u"constant";
inline constexpr Name Left = u"left";
inline constexpr Name Right = u"right";
inline constexpr Name Upper = u"top";
inline constexpr Name Bottom = u"bottom";
inline constexpr Name GraphLabels = u"graphLabels";

inline constexpr Name Center = u"center";
inline constexpr Name Size = u"size";
inline constexpr Name X = u"x";
inline constexpr Name Y = u"y";
inline constexpr Name Width = u"width";
inline constexpr Name Height = u"height";
inline constexpr Name OriginalSize = u"originalSize";
inline constexpr Name ForceClipping = u"forceClipping";
inline constexpr Name Connectors = u"connectors";
inline constexpr Name Connector = u"connector";
inline constexpr Name NodeLabels = u"nodeLabels";

inline constexpr Name SourceClipping = u"sourceClipping";
inline constexpr Name TargetClipping = u"targetClipping";
inline constexpr Name SourceConnector = u"sourceConnector";
inline constexpr Name TargetConnector = u"targetConnector";
inline constexpr Name Bends = u"bends";
inline constexpr Name EdgeLabels = u"edgeLabels";

inline constexpr Name ConnectorLabels = u"connectorLabels";
inline constexpr Name Label = u"label";
inline constexpr Name NodeLabel = u"nodeLabel";
inline constexpr Name EdgeLabel = u"edgeLabel";
inline constexpr Name ConnectorLabel = u"connectorLabel";
inline constexpr Name GraphLabel = u"graphLabel";
inline constexpr Name ConstantOffset = u"constantOffset";
inline constexpr Name ProportionalOffset = u"proportionalOffset";
inline constexpr Name DistanceFromSource = u"distanceFromSource";

inline constexpr Name Complexity = u"complexity";
inline constexpr Name NestingRelations = u"nestingRelations";
inline constexpr Name NestingRelation = u"nestingRelation";
inline constexpr Name ChildGraphRelation = u"childGraphRelation";
inline constexpr Name Expanded = u"expanded";
inline constexpr Name CalculatedMargins = u"calculatedMargins";
inline constexpr Name NestedMargins = u"nestedMargins";
inline constexpr Name MetaEdges = u"metaEdges";
inline constexpr Name MetaEdge = u"metaEdge";
inline constexpr Name HiddenObjects = u"hiddenObjects";
inline constexpr Name Hidden = u"hidden";
inline constexpr Name Folders = u"folders";
inline constexpr Name Folder = u"folder";

// Within `more`.
inline constexpr Name UserField = u"userField";
inline constexpr Name ReadOnly = u"readOnly";
inline constexpr Name State = u"state";
inline constexpr Name Clipping = u"clipping";
inline constexpr Name MultiEdge = u"multiEdge";
inline constexpr Name Ends = u"ends";
inline constexpr Name At = u"at";
inline constexpr Name Direction = u"direction";
inline constexpr Name HasDirection = u"hasDirection";
inline constexpr Name EdgeOrder = u"edgeOrder";
inline constexpr Name Incoming = u"in";
inline constexpr Name Outgoing = u"out";
inline constexpr Name Disconnected = u"disconnected";
inline constexpr Name Deactivated = u"deactivated";
inline constexpr Name MovesWithOwner = u"movesWithOwner";
inline constexpr Name Pinned = u"pinned";
inline constexpr Name Named = u"named";
inline constexpr Name AspectRatio = u"aspectRatio";
inline constexpr Name Touches = u"touches";
inline constexpr Name MultiEdgeSpacing = u"multiEdgeSpacing";
inline constexpr Name BoundsOff = u"boundsOff";
inline constexpr Name Transform = u"transform";
inline constexpr Name CompressMetaEdges = u"compressMetaEdges";
inline constexpr Name ReflexiveMetaEdgeReplacement = u"reflexiveMetaEdgeReplacement";
inline constexpr Name IgnoreConnectorsForMetaEdges = u"ignoreConnectorsForMetaEdges";
inline constexpr Name UpdatesMetaEdges = u"updatesMetaEdges";

inline constexpr Name NoRootGraph = u"noRootGraph";

}  // namespace qx::names
