#pragma once

/// A story with one of everything that the commands tell apart.
namespace support {

inline constexpr char kSampleStory[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<Talewright version="1.0" documentType="screenplay" template="Short">
<metaData>by nobody</metaData><Tag label="Prop: key"/>
<document version="3.1">
<stream name="body"><section>
<scene sceneNumber="1"><paragraph objID="a" element="SceneHeading" shotDuration="0:01:30"><textRun>INT. KÜCHE - NIGHT</textRun>
</paragraph><paragraph objID="b" element="Action"><textRun>Rain on glass.</textRun></paragraph>
<paragraph objID="c" element="Character"><textRun>ANN (V.O.)</textRun></paragraph>
<paragraph objID="j" element="Parenthetical"><textRun>(low)</textRun></paragraph>
<paragraph objID="d" element="Dialog"><textRun>Hi there.</textRun></paragraph>
<paragraph objID="e" element="Character"><textRun>小明</textRun></paragraph>
<paragraph objID="f" element="Dialog"><textRun>你好</textRun></paragraph></scene>
<scene sceneNumber="12A/B"><paragraph objID="g" element="SceneHeading"><textRun>EXT. PIER</textRun></paragraph></scene>
<scene sceneNumber="12A:B"><paragraph objID="h" element="Action"><textRun>Fog.</textRun></paragraph></scene>
<scene><paragraph objID="i" element="Action"><textRun>Nothing.</textRun></paragraph>
<paragraph objID="k" element="Character"><textRun>BO</textRun></paragraph>
<paragraph objID="l" element="Character"><textRun>ANN</textRun></paragraph>
<paragraph objID="m" element="Dialog"><textRun>No.</textRun><textRun> Never.</textRun></paragraph>
<paragraph objID="n" element="Character"><textRun>ANN (O.S.)</textRun></paragraph>
<paragraph objID="o" element="Dialog"><textRun>Yes.</textRun></paragraph></scene>
<scene sceneNumber="2"/><scene sceneNumber="2"/>
</section></stream>
<commentStream name="notes" commentAuthor="Mara"><section><scene/></section></commentStream>
</document></Talewright>
)";

} // namespace support
