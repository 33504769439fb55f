// The host suites that the plug-in's suite cache has a slot for: one row per slot, as
// (slot identifier, exact suite name, version). This one table drives the slot
// enumeration, the names and versions, and the acquire and release passes.
// A name with several versions has a slot per version; "PF QZ Adv Time Suite" 4 and
// "QZGP Math Suite" 1 have two slots each for the same version.
// "QZGP Render Asyc Manager Suite" is the host's exact spelling.
#pragma once

// clang-format off
#define QZ_HOST_SUITE_SLOTS(X) \
    X(InkwellDraw1, "INKWELL Draw Suite", 1) \
    X(InkwellPath1, "INKWELL Path Suite", 1) \
    X(InkwellSupplier1, "INKWELL Supplier Suite", 1) \
    X(InkwellSurface2, "INKWELL Surface Suite", 2) \
    X(PfANSI1, "PF ANSI Suite", 1) \
    X(PfColorSettings1, "PF Color Settings Suite", 1) \
    X(PfColorSettings3, "PF Color Settings Suite", 3) \
    X(PfColorSettings4, "PF Color Settings Suite", 4) \
    X(PfColorParam1, "PF ColorParamSuite", 1) \
    X(PfEffectCustomUIOverlayTheme1, "PF Effect Custom UI Overlay Theme Suite", 1) \
    X(PfEffectCustomUI1, "PF Effect Custom UI Suite", 1) \
    X(PfEffectCustomUI2, "PF Effect Custom UI Suite", 2) \
    X(PfFillMatte2, "PF Fill Matte Suite", 2) \
    X(PfHandle2, "PF Handle Suite", 2) \
    X(PfIterate81, "PF Iterate8 Suite", 1) \
    X(PfParamUtils3, "PF Param Utils Suite", 3) \
    X(PfPathData1, "PF Path Data Suite", 1) \
    X(PfPathQuery1, "PF Path Query Suite", 1) \
    X(PfQzAdvApp1, "PF QZ Adv App Suite", 1) \
    X(PfQzAdvApp2, "PF QZ Adv App Suite", 2) \
    X(PfQzAdvItem1, "PF QZ Adv Item Suite", 1) \
    X(PfQzAdvTime4a, "PF QZ Adv Time Suite", 4) \
    X(PfQzAdvTime4b, "PF QZ Adv Time Suite", 4) \
    X(PfQzApp1, "PF QZ App Suite", 1) \
    X(PfQzApp6, "PF QZ App Suite", 6) \
    X(PfQzApp7, "PF QZ App Suite", 7) \
    X(PfSampling161, "PF Sampling16 Suite", 1) \
    X(PfSampling81, "PF Sampling8 Suite", 1) \
    X(PfSamplingFloat1, "PF SamplingFloat Suite", 1) \
    X(PfWorld1, "PF World Suite", 1) \
    X(PfWorldTransform1, "PF World Transform Suite", 1) \
    X(Pfiterate161, "PF iterate16 Suite", 1) \
    X(PfiterateFloat1, "PF iterateFloat Suite", 1) \
    X(QzPluginHelper22, "QZ Plugin Helper Suite2", 2) \
    X(ArtisanUtil1, "QZGP Artisan Util Suite", 1) \
    X(Camera2, "QZGP Camera Suite", 2) \
    X(Canvas10, "QZGP Canvas Suite", 10) \
    X(Canvas11, "QZGP Canvas Suite", 11) \
    X(Canvas13, "QZGP Canvas Suite", 13) \
    X(Canvas14, "QZGP Canvas Suite", 14) \
    X(Collection1, "QZGP Collection Suite", 1) \
    X(Collection2, "QZGP Collection Suite", 2) \
    X(Command1, "QZGP Command Suite", 1) \
    X(Comp4, "QZGP Comp Suite", 4) \
    X(Comp9, "QZGP Comp Suite", 9) \
    X(Comp11, "QZGP Comp Suite", 11) \
    X(Comp14, "QZGP Comp Suite", 14) \
    X(Comp15, "QZGP Comp Suite", 15) \
    X(Comp18, "QZGP Comp Suite", 18) \
    X(Comp19, "QZGP Comp Suite", 19) \
    X(Comp21, "QZGP Comp Suite", 21) \
    X(Comp25, "QZGP Comp Suite", 25) \
    X(Composite4, "QZGP Composite Suite", 4) \
    X(DynamicStream2, "QZGP Dynamic Stream Suite", 2) \
    X(DynamicStream3, "QZGP Dynamic Stream Suite", 3) \
    X(DynamicStream5, "QZGP Dynamic Stream Suite", 5) \
    X(Effect1, "QZGP Effect Suite", 1) \
    X(Effect2, "QZGP Effect Suite", 2) \
    X(Effect3, "QZGP Effect Suite", 3) \
    X(Effect4, "QZGP Effect Suite", 4) \
    X(FileImportManager3, "QZGP File Import Manager Suite", 3) \
    X(Footage11, "QZGP Footage Suite", 11) \
    X(IOIn5, "QZGP IO In Suite", 5) \
    X(IOOut7, "QZGP IO Out Suite", 7) \
    X(Item3, "QZGP Item Suite", 3) \
    X(Item7, "QZGP Item Suite", 7) \
    X(Item10, "QZGP Item Suite", 10) \
    X(Item11, "QZGP Item Suite", 11) \
    X(Item13, "QZGP Item Suite", 13) \
    X(ItemView1, "QZGP Item View Suite", 1) \
    X(Keyframe1, "QZGP Keyframe Suite", 1) \
    X(Keyframe3, "QZGP Keyframe Suite", 3) \
    X(Keyframe4, "QZGP Keyframe Suite", 4) \
    X(LayerMask2, "QZGP Layer Mask Suite", 2) \
    X(LayerMask5, "QZGP Layer Mask Suite", 5) \
    X(LayerMask6, "QZGP Layer Mask Suite", 6) \
    X(LayerMask7, "QZGP Layer Mask Suite", 7) \
    X(LayerRenderOptions1, "QZGP Layer Render Options Suite", 1) \
    X(LayerRenderOptions2, "QZGP Layer Render Options Suite", 2) \
    X(Layer5, "QZGP Layer Suite", 5) \
    X(Layer8, "QZGP Layer Suite", 8) \
    X(Layer10, "QZGP Layer Suite", 10) \
    X(Layer11, "QZGP Layer Suite", 11) \
    X(Layer12, "QZGP Layer Suite", 12) \
    X(Layer13, "QZGP Layer Suite", 13) \
    X(Layer14, "QZGP Layer Suite", 14) \
    X(Light1, "QZGP Light Suite", 1) \
    X(Light2, "QZGP Light Suite", 2) \
    X(Marker1, "QZGP Marker Suite", 1) \
    X(Marker2, "QZGP Marker Suite", 2) \
    X(Marker3, "QZGP Marker Suite", 3) \
    X(MaskOutline2, "QZGP Mask Outline Suite", 2) \
    X(MaskOutline3, "QZGP Mask Outline Suite", 3) \
    X(MaskOutline5, "QZGP Mask Outline Suite", 5) \
    X(Math1a, "QZGP Math Suite", 1) \
    X(Math1b, "QZGP Math Suite", 1) \
    X(Memory1, "QZGP Memory Suite", 1) \
    X(OutputModule4, "QZGP Output Module Suite", 4) \
    X(PfInterface1, "QZGP PF Interface Suite", 1) \
    X(PersistentData3, "QZGP Persistent Data Suite", 3) \
    X(PersistentData4, "QZGP Persistent Data Suite", 4) \
    X(Proj8, "QZGP Proj Suite", 8) \
    X(Proj9, "QZGP Proj Suite", 9) \
    X(QueryXform4, "QZGP QueryXform Suite", 4) \
    X(Register6, "QZGP Register Suite", 6) \
    X(RenderAsycManager1, "QZGP Render Asyc Manager Suite", 1) \
    X(RenderOptions1, "QZGP Render Options Suite", 1) \
    X(RenderOptions2, "QZGP Render Options Suite", 2) \
    X(RenderQueueItem3, "QZGP Render Queue Item Suite", 3) \
    X(RenderQueueItem4, "QZGP Render Queue Item Suite", 4) \
    X(RenderQueue1, "QZGP Render Queue Suite", 1) \
    X(Render1, "QZGP Render Suite", 1) \
    X(Render2, "QZGP Render Suite", 2) \
    X(Render3, "QZGP Render Suite", 3) \
    X(Render5, "QZGP Render Suite", 5) \
    X(Render8, "QZGP Render Suite", 8) \
    X(SoundData1, "QZGP Sound Data Suite", 1) \
    X(Stream4, "QZGP Stream Suite", 4) \
    X(Stream7, "QZGP Stream Suite", 7) \
    X(Stream8, "QZGP Stream Suite", 8) \
    X(Stream9, "QZGP Stream Suite", 9) \
    X(Stream10, "QZGP Stream Suite", 10) \
    X(TextDocument1, "QZGP Text Document Suite", 1) \
    X(TextLayer1, "QZGP Text Layer Suite", 1) \
    X(Tracker1, "QZGP Tracker Suite", 1) \
    X(TrackerUtility1, "QZGP Tracker Utility Suite", 1) \
    X(Utility3, "QZGP Utility Suite", 3) \
    X(Utility7, "QZGP Utility Suite", 7) \
    X(Utility10, "QZGP Utility Suite", 10) \
    X(Utility11, "QZGP Utility Suite", 11) \
    X(Utility13, "QZGP Utility Suite", 13) \
    X(World2, "QZGP World Suite", 2) \
    X(World3, "QZGP World Suite", 3)
// clang-format on
