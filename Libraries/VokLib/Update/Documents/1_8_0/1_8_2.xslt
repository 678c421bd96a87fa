<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.8.0 to 1.8.2: a path begins with a bar. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:from="http://qel.example/ns/qeli/1_8_0/qeli"
    xmlns="http://qel.example/ns/qeli/1_8_2/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_8_0/qeli'"/>
    </xsl:call-template>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_8_2/qeli http://qel.example/ns/qeli/1_8_2/qeli.xsd">
      <xsl:apply-templates/>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <!-- The elements that hold a path. -->
  <xsl:template match="
      from:aimConstraint|from:orientationConstraint|from:parentConstraint|from:scaleConstraint|
      from:translationConstraint|from:aimConstraint/from:target|
      from:orientationConstraint/from:target|from:parentConstraint/from:target|
      from:scaleConstraint/from:target|from:translationConstraint/from:target|from:anim|
      from:animChannel|from:blendshape|from:cgshader/from:binding|from:material/from:binding|
      from:shader/from:binding|from:deformer|from:expression/from:input|
      from:expression/from:output|from:instance|from:primitives|from:primitive|
      from:objset/from:member|from:pmdataQEL|from:pose/from:element|from:skin/from:influence">
    <xsl:element name="{local-name()}">
      <xsl:apply-templates select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <xsl:template match="@*">
    <xsl:copy/>
  </xsl:template>

  <!-- The paths themselves; an empty one stays the path to nothing. -->
  <xsl:template match="
      from:aimConstraint/@constrain|from:orientationConstraint/@constrain|
      from:parentConstraint/@constrain|from:scaleConstraint/@constrain|
      from:translationConstraint/@constrain|from:aimConstraint/from:target/@name|
      from:orientationConstraint/from:target/@name|from:parentConstraint/from:target/@name|
      from:scaleConstraint/from:target/@name|from:translationConstraint/from:target/@name|
      from:anim/@target|from:animChannel/@inputObject|from:blendshape/@controller|
      from:cgshader/from:binding/@source|from:material/from:binding/@source|
      from:shader/from:binding/@source|from:deformer/@target|from:expression/from:input/@object|
      from:expression/from:output/@object|from:instance/@target|from:primitives/@shader|
      from:primitive/@shader|from:objset/from:member/@path|from:pmdataQEL/@target|
      from:pose/from:element/@target|from:skin/from:influence/@target">
    <xsl:attribute name="{name()}">
      <xsl:if test="string()">
        <xsl:message>Updating VokPath: <xsl:value-of select="."/></xsl:message>
        <xsl:text>|</xsl:text>
      </xsl:if>
      <xsl:value-of select="."/>
    </xsl:attribute>
  </xsl:template>
</xsl:stylesheet>
